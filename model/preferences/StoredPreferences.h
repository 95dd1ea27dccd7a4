#pragma once

#include "base/ports/SPUUpdater.h"
#include "base/ports/UserDefaults.h"

#include <concepts>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tidewell {

/// One stored value of the program: its key, its type and what a view shows as long as nothing
/// was ever stored.
///
/// A view's default is shown and never written, so the two ways of reading differ until the first
/// write: `readForView` gives the default then, `readPlainly` the store's own empty value.
template <typename T>
struct StoredPreference {
    std::string_view key;
    T viewDefault;
};

/// Blobs and texts give their default as text, which unlike a vector can be a constant.
template <>
struct StoredPreference<Data> {
    std::string_view key;
    std::string_view viewDefault;
};
template <>
struct StoredPreference<std::string> {
    std::string_view key;
    std::string_view viewDefault;
};

/// Every key that the program stores. Those of its own begin with an underscore; the others are
/// the updater's, which reads and writes them itself.
namespace preferences {
inline constexpr StoredPreference<bool> startAtLogin{"_startAtLogin", false};
inline constexpr StoredPreference<bool> confimQuitOnExit{"_confimQuitOnExit", true};
/// Seconds. Loops read it with `pollingIntervalForLoops`.
inline constexpr StoredPreference<double> pollingInterval{"_pollingInterval", 5.0};
/// A point of the screen, as a JSON array of two numbers.
inline constexpr StoredPreference<Data> auxiliaryWindowPos{"_auxiliaryWindowPos", "[0,0]"};
/// The history of samples, as the JSON document of a `DataContainer`. No view shows it.
inline constexpr StoredPreference<Data> dataContainer{"_dataContainer", ""};
/// Whether the updater checks by itself.
inline constexpr StoredPreference<bool> enableAutomaticChecks{updater_keys::enableAutomaticChecks,
                                                              false};
/// Whether the updater fetches a new version before the user wants to install it.
inline constexpr StoredPreference<bool> automaticallyUpdate{updater_keys::automaticallyUpdate,
                                                            false};
/// Seconds between two silent checks.
inline constexpr StoredPreference<double> scheduledCheckInterval{
    updater_keys::scheduledCheckInterval, 86400.0};
/// The version that the user does not want to hear of any more.
inline constexpr StoredPreference<std::string> skippedVersion{updater_keys::skippedVersion, ""};
} // namespace preferences

/// What is stored; 0, false or empty when it was never written or is of another type.
inline bool readPlainly(const UserDefaults& defaults, const StoredPreference<bool>& preference) {
    return defaults.boolForKey(preference.key);
}
inline double readPlainly(const UserDefaults& defaults,
                          const StoredPreference<double>& preference) {
    return defaults.doubleForKey(preference.key);
}
inline std::optional<Data> readPlainly(const UserDefaults& defaults,
                                       const StoredPreference<Data>& preference) {
    return defaults.dataForKey(preference.key);
}

/// What a view shows: the stored value, or the default when there is none of the right type.
/// A Boolean serves as a number and the other way round.
template <typename T>
    requires std::same_as<T, bool> || std::same_as<T, double>
T readForView(const UserDefaults& defaults, const StoredPreference<T>& preference) {
    const auto stored = defaults.value(preference.key);
    const bool readable = stored && (std::holds_alternative<bool>(*stored) ||
                                     std::holds_alternative<double>(*stored));
    return readable ? readPlainly(defaults, preference) : preference.viewDefault;
}
inline Data readForView(const UserDefaults& defaults, const StoredPreference<Data>& preference) {
    auto stored = readPlainly(defaults, preference);
    return stored ? std::move(*stored)
                  : Data(preference.viewDefault.begin(), preference.viewDefault.end());
}

/// Stores `value` at once. The parameter takes no part in deducing T: a `float` or an `int` given
/// for a number is converted.
template <typename T>
void write(UserDefaults& defaults, const StoredPreference<T>& preference,
           std::type_identity_t<T> value) {
    defaults.set(preference.key, std::move(value));
}

/// The pause of the sampling loops in seconds, to be read anew before each: the larger of the
/// stored value and 1. Not a number and a value never written give 1.
inline double pollingIntervalForLoops(const UserDefaults& defaults) {
    const double stored = readPlainly(defaults, preferences::pollingInterval);
    return stored > 1.0 ? stored : 1.0;
}

} // namespace tidewell
