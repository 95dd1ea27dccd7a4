#pragma once

#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/StatusItem.h"

#include <QDBusConnection>
#include <QMenu>
#include <QObject>
#include <QPointer>

namespace tidewell {

/// The item's menu as a QMenu, for hosts that draw no menus. An open one stays when this is
/// destroyed.
class StatusMenuPopup final {
public:
    /// `appearance` must outlive this.
    StatusMenuPopup(std::vector<StatusMenuEntry> entries, const DesktopAppearance& appearance);

    /// Opens the menu at `place` of the screen, unless it is open; does not wait for a choice.
    void popUp(const QPoint& place);

private:
    std::vector<StatusMenuEntry> entries_;
    const DesktopAppearance& appearance_;
    QPointer<QMenu> open_;
};

/// The item's menu for hosts that draw it: a com.canonical.dbusmenu on the bus, until this is
/// destroyed. The menu never changes.
class ExportedStatusMenu final {
public:
    static constexpr const char* path = "/MenuBar";

    /// `willOpen` is called when the host is about to show the menu, as far as hosts tell.
    ExportedStatusMenu(QDBusConnection bus, std::vector<StatusMenuEntry> entries,
                       std::function<void()> willOpen);
    ExportedStatusMenu(const ExportedStatusMenu&) = delete;
    ExportedStatusMenu& operator=(const ExportedStatusMenu&) = delete;
    ~ExportedStatusMenu();

private:
    QDBusConnection bus_;
    QObject object_;
};

} // namespace tidewell
