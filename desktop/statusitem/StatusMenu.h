#pragma once

#include "desktop/statusitem/StatusItem.h"

#include <QDBusConnection>
#include <QObject>

namespace tidewell {

/// Shows the entries as a menu of our own at `place`, on the screen, and returns at once. For forms
/// of the item whose desktop draws no menus.
void popUpStatusMenu(const std::vector<StatusMenuEntry>& entries, Appearance appearance,
                     const QPoint& place);

/// The item's menu as desktops draw it themselves: an object on the bus with the interface
/// com.canonical.dbusmenu, there as long as this object. The menu never changes.
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
