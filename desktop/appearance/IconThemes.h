#pragma once

class QString;

namespace tidewell {

// QIcon's themes. Main thread, after the application object is made.

/// Uses the theme of that name, if it is installed; says whether it is.
bool useIconTheme(const QString& name);

/// Uses the theme that GTK's settings file names, and a complete one that is installed for the
/// icons which a theme lacks.
void useInstalledIconThemes();

} // namespace tidewell
