#pragma once

#include "desktop/statusitem/StatusItem.h"

#include <QDBusConnection>
#include <QObject>

namespace tidewell {

/// Pops the entries up as a QMenu at `place` of the screen, without waiting for a choice. For hosts
/// that draw no menus.
void popUpStatusMenu(const std::vector<StatusMenuEntry>& entries, Appearance appearance,
                     const QPoint& place);

/// The item's menu for hosts that draw it: a com.canonical.dbusmenu on the bus, until this is
/// destroyed. The menu never changes.
class ExportedStatusMenu final {
public:
    static constexpr const char* path = "/MenuBar";

    ExportedStatusMenu(QDBusConnection bus, std::vector<StatusMenuEntry> entries);
    ExportedStatusMenu(const ExportedStatusMenu&) = delete;
    ExportedStatusMenu& operator=(const ExportedStatusMenu&) = delete;
    ~ExportedStatusMenu();

private:
    QDBusConnection bus_;
    QObject object_;
};

} // namespace tidewell
