#pragma once

namespace tidewell {

/// Sets QIcon's theme where Qt knows none of the desktop's, to the one that GTK's settings name,
/// and a complete one that is installed as its fallback. Main thread, once, after the application
/// object is made.
void useInstalledIconThemes();

} // namespace tidewell
