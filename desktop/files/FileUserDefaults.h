#pragma once

#include "base/ports/Log.h"
#include "base/ports/UserDefaults.h"
#include "base/values/FileIdentity.h"

#include <nlohmann/json.hpp>

#include <filesystem>

namespace tidewell {

/// Where the user's preferences lie: tidewell/defaults.json in $XDG_CONFIG_HOME, or in ~/.config
/// where that is unset or not an absolute path.
std::filesystem::path defaultPreferencesFile();

/// Preferences in one JSON file, an object with an entry for each key: true and false, numbers and
/// texts as themselves, blobs as {"data": "<base64>"} and numbers that JSON lacks as
/// {"number": "nan"} (or "inf", "-inf"). Entries of any other form, perhaps of a newer version,
/// read as never written and stay in the file as they are. Texts are written as UTF-8, with
/// replacement characters for what is not.
///
/// The file is read by the constructor, and again before it is replaced where another program wrote
/// it in the meantime: of its entries only those that were set here are replaced. Each change is on
/// the disk when `set()` returns, with those of `setLater()` before it; the file is replaced as a
/// whole, so that no failure harms what was there, and a link to it stays a link. What cannot be
/// written gives one error line, until that succeeds or fails in another way.
///
/// What is not as the above, or no regular file, is set aside under its name with ".unreadable-"
/// and the time appended, with one error line, and the preferences start empty; where even that
/// fails nothing is written in this run. A file that cannot be read for a reason that may pass
/// stays, with one error line, and is not replaced before it could be read. One thread, in a
/// program that keeps the plain decimal sign (LC_NUMERIC "C"), with which the parser reads
/// fractions; `log` must outlive this.
class FileUserDefaults final : public UserDefaults {
public:
    FileUserDefaults(const std::filesystem::path& file, Log& log);

    std::optional<DefaultsValue> value(std::string_view key) const override;
    void set(std::string_view key, DefaultsValue value) override;
    void setLater(std::string_view key, DefaultsValue value) override;

private:
    void read();
    void setAside(const std::string& problem);
    void save();
    void report(const std::string& problem, std::string_view function);

    const std::filesystem::path file_; // no link itself
    Log& log_;
    nlohmann::json entries_ = nlohmann::json::object();
    nlohmann::json unsaved_ = nlohmann::json::object(); // those that have not reached the disk
    std::optional<FileIdentity> identity_; // of the file as it was last read or written
    std::string reported_;                 // the last problem, until something was saved
    bool isKeptInMemory_ = false;          // the file holds something that must not be replaced
    bool isUnreadable_ = false;            // for a reason that may pass
};

} // namespace tidewell
