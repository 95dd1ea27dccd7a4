#pragma once

#include "base/ports/Log.h"
#include "base/ports/UserDefaults.h"

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
/// The file is read once, by the constructor. Each change is on the disk when `set()` returns; the
/// file is replaced as a whole, so that no failure harms what was there, and a link to it stays a
/// link. What cannot be written gives one error line. A file that cannot be read, or not as the
/// above, is set aside under its name with ".unreadable-" and the time appended, with one error
/// line, and the preferences start empty; where even that fails nothing is written in this run.
/// One thread, in a program that keeps the plain decimal sign (LC_NUMERIC "C"), with which the
/// parser reads fractions; `log` must outlive this.
class FileUserDefaults final : public UserDefaults {
public:
    FileUserDefaults(const std::filesystem::path& file, Log& log);

    std::optional<DefaultsValue> value(std::string_view key) const override;
    void set(std::string_view key, DefaultsValue value) override;

private:
    void read();
    void setAside(const std::string& problem);
    void save();

    const std::filesystem::path file_; // no link itself
    Log& log_;
    nlohmann::json entries_ = nlohmann::json::object();
    bool isKeptInMemory_ = false; // the file holds something that must not be replaced
    bool isUnsaved_ = false;      // a change has not reached the disk
};

} // namespace tidewell
