#pragma once

#include <QString>

namespace tidewell {

/// Opens the notification settings of the desktops that `currentDesktop` names, as
/// `XDG_CURRENT_DESKTOP` does: starts the first program of theirs that is installed. False where
/// there is none, or it cannot be started.
bool openNotificationSettings(const QString& currentDesktop);

} // namespace tidewell
