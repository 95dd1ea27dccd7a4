#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tidewell {

/// What the program knows of itself: the information dictionary that is installed with it.
/// Immutable after creation; any thread.
class Bundle {
public:
    /// The strings of the dictionary; entries of other types are left out by whoever reads the
    /// file. Empty stands for a dictionary that is missing.
    using InfoDictionary = std::map<std::string, std::string, std::less<>>;

    explicit Bundle(InfoDictionary info)
        : info_(std::move(info)) {}

    /// The text under `key`; empty when there is none.
    std::optional<std::string> infoString(std::string_view key) const {
        const auto found = info_.find(key);
        return found == info_.end() ? std::nullopt : std::optional(found->second);
    }

    /// The bundle identifier that the dictionary gives ("CFBundleIdentifier").
    std::optional<std::string> identifier() const { return infoString("CFBundleIdentifier"); }

private:
    InfoDictionary info_;
};

// What the program says of itself, each with a fallback where the information dictionary lacks the
// key. Any thread.

inline std::string applicationName(const Bundle& bundle) {
    return bundle.infoString("CFBundleName").value_or("Unknown");
}
inline std::string version(const Bundle& bundle) {
    return bundle.infoString("CFBundleShortVersionString").value_or("No version");
}
inline std::string buildNumber(const Bundle& bundle) {
    return bundle.infoString("CFBundleVersion").value_or("No build");
}
inline std::string copyright(const Bundle& bundle) {
    return bundle.infoString("NSHumanReadableCopyright")
        .value_or("No copyright information found.");
}

} // namespace tidewell
