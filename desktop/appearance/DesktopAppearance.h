#pragma once

#include "base/observable/ObserverList.h"
#include "base/values/Colour.h"
#include "desktop/appearance/DesktopSettings.h"

#include <QDBusServiceWatcher>

#include <optional>

namespace tidewell {

/// Whether the desktop is light or dark, followed live. Asked in this order, none of them waited
/// for: the desktop portal's colour scheme, the name of Xfce's theme, the toolkit's palette. The
/// last one answers at once, so there always is a value. For its sake the program gives palettes
/// to its windows only, never to the application. Main thread.
class DesktopAppearance final : public QObject {
    Q_OBJECT

public:
    /// `desktops` is the list of desktop names that the session gives, parted by colons
    /// (XDG_CURRENT_DESKTOP). After the application object.
    DesktopAppearance(const QDBusConnection& bus, const QString& desktops);

    /// What windows stand on.
    Appearance desktop() const { return desktop_; }
    /// What pictures in the status area stand on; some desktops have a dark bar in a light theme.
    Appearance statusArea() const { return statusArea_; }

    /// Calls `observer` after each change of either.
    Subscription didChange(std::function<void()> observer) {
        return observers_.add(std::move(observer));
    }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Told of a change by whoever, it asks those who know.
    Q_SLOT void askPortal();
    Q_SLOT void askXfce();
    void ask(const SettingsService& service, const QString& group, const QString& key,
             std::function<void(const QVariant& value)> take);
    void decide();

    QDBusConnection bus_;
    QDBusServiceWatcher portalOwner_;
    QDBusServiceWatcher xfceOwner_;
    bool hasDarkBar_;
    std::optional<Appearance> portal_;
    std::optional<Appearance> xfceTheme_;
    bool isXfcePanelDark_ = false;
    Appearance desktop_ = Appearance::light;
    Appearance statusArea_ = Appearance::light;
    ObserverList<> observers_;
};

} // namespace tidewell
