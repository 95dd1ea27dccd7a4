#pragma once

namespace tidewell {

/// Gives the toolkit an icon theme where it knows of none for the desktop: the one that the user
/// chose for other toolkits, and a complete one that is installed for icons which that lacks.
/// Main thread, once, after the application object is made.
void useInstalledIconThemes();

} // namespace tidewell
