#pragma once

class QString;

namespace tidewell {

// QIcon's themes. Main thread, after the application object is made.

/// Uses the theme of that name, if it is installed; says whether it is.
bool useIconTheme(const QString& name);

/// Uses a complete theme that is installed for the icons which the other one lacks.
void useCompleteIconTheme();

} // namespace tidewell
