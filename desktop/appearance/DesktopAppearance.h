#pragma once

#include "base/observable/ObserverList.h"
#include "base/values/Colour.h"
#include "desktop/appearance/LocalSettings.h"
#include "desktop/appearance/SettingsService.h"

#include <QDBusServiceWatcher>

#include <optional>

namespace tidewell {

/// Whether the desktop is light or dark and wants high contrast, followed live: by the settings
/// portal's colour scheme, else by the name of Xfce's theme, else by `LocalSettings`, else by the
/// application's QPalette. The last two are known at once. The program therefore sets palettes on
/// its windows only, never on the application. Main thread.
class DesktopAppearance final : public QObject {
    Q_OBJECT

public:
    /// `desktops` is the value of XDG_CURRENT_DESKTOP; `local` must outlive this. After the
    /// application object.
    DesktopAppearance(const QDBusConnection& bus, const QString& desktops, LocalSettings& local);

    /// Of windows.
    Appearance desktop() const { return desktop_; }
    /// Of the status area, light or dark: some desktops have a dark bar in a light theme.
    Appearance statusArea() const { return statusArea_; }

    /// Calls `observer` after each change of either.
    Subscription didChange(std::function<void()> observer) {
        return observers_.add(std::move(observer));
    }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // A change signal may come from any sender, so the value is asked for.
    Q_SLOT void askPortal();
    Q_SLOT void askXfce();
    void ask(const SettingsService& service, const QString& group, const QString& key,
             std::function<void(const QVariant& value)> take);
    void decide();

    QDBusConnection bus_;
    const LocalSettings& local_;
    QDBusServiceWatcher portalOwner_;
    QDBusServiceWatcher xfceOwner_;
    bool hasDarkBar_;
    std::optional<Appearance> portal_;
    std::optional<Appearance> xfceTheme_;
    bool portalWantsContrast_ = false;
    bool isXfcePanelDark_ = false;
    Appearance desktop_ = Appearance::light;
    Appearance statusArea_ = Appearance::light;
    ObserverList<> observers_;
    Subscription localChanged_;
};

} // namespace tidewell
