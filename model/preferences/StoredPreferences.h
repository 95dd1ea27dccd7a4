#pragma once

#include "base/ports/SPUUpdater.h"
#include "base/ports/StoredPreference.h"

namespace tidewell {

/// Every key that the program stores. Those of its own begin with an underscore.
namespace preferences {
inline constexpr StoredPreference<bool> startAtLogin{"_startAtLogin", false};
inline constexpr StoredPreference<bool> confimQuitOnExit{"_confimQuitOnExit", true};
/// Seconds. Loops read it with `pollingIntervalForLoops`.
inline constexpr StoredPreference<double> pollingInterval{"_pollingInterval", 5.0};
/// A point of the screen, as a JSON array of two numbers.
inline constexpr StoredPreference<Data> auxiliaryWindowPos{"_auxiliaryWindowPos", "[0,0]"};
/// Where the user put the label window; the desktop's part of the program knows the form.
inline constexpr StoredPreference<std::string> labelWindowPos{"_labelWindowPos", ""};
/// The history of samples, as the JSON document of a `DataContainer`. No view shows it.
inline constexpr StoredPreference<Data> dataContainer{"_dataContainer", ""};
/// Read and written by the updater.
inline constexpr UpdaterPreferences updater{
    .automaticallyChecks = {"SUEnableAutomaticChecks", false},
    .automaticallyDownloads = {"SUAutomaticallyUpdate", false},
    .checkInterval = {"SUScheduledCheckInterval", 86400.0},
    .skippedVersion = {"SUSkippedVersion", ""},
    .feedSerial = {"SUFeedSerial", 0.0},
};
} // namespace preferences

/// The pause of the sampling loops in seconds, to be read anew before each: the larger of the
/// stored value and 1. Not a number and a value never written give 1.
inline double pollingIntervalForLoops(const UserDefaults& defaults) {
    const double seconds = stored(defaults, preferences::pollingInterval).value_or(0);
    return seconds > 1.0 ? seconds : 1.0;
}

} // namespace tidewell
