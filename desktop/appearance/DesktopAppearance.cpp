#include "desktop/appearance/DesktopAppearance.h"

#include "ui/Palette.h"

#include <QEvent>
#include <QGuiApplication>

namespace tidewell {

namespace {

const QString portalGroup = QStringLiteral("org.freedesktop.appearance");
const QString portalScheme = QStringLiteral("color-scheme");
const QString portalContrast = QStringLiteral("contrast");
const QString xfceSession = QStringLiteral("xsettings");
const QString xfceTheme = QStringLiteral("/Net/ThemeName");
const QString xfcePanel = QStringLiteral("xfce4-panel");
const QString xfcePanelDark = QStringLiteral("/panels/dark-mode");

/// GNOME's bar is dark in its light theme, too. Derived desktops list GNOME besides themselves.
bool hasDarkBar(const QString& desktops) {
    const QStringList names = desktops.split(QLatin1Char(':'));
    return names.contains(QStringLiteral("GNOME")) && !names.contains(QStringLiteral("Budgie")) &&
           !names.contains(QStringLiteral("GNOME-Flashback"));
}

} // namespace

DesktopAppearance::DesktopAppearance(const QDBusConnection& bus, const QString& desktops,
                                     LocalSettings& local)
    : bus_(bus)
    , local_(local)
    , portalOwner_(portalSettings.name, bus, QDBusServiceWatcher::WatchForRegistration)
    , xfceOwner_(xfceSettings.name, bus, QDBusServiceWatcher::WatchForRegistration)
    , hasDarkBar_(hasDarkBar(desktops))
    , localChanged_(local.didChange([this] { decide(); })) {
    qGuiApp->installEventFilter(this);
    decide();
    if (!bus_.isConnected()) {
        return;
    }
    connect(&portalOwner_, &QDBusServiceWatcher::serviceRegistered, this, [this] { askPortal(); });
    connect(&xfceOwner_, &QDBusServiceWatcher::serviceRegistered, this, [this] { askXfce(); });
    // No sender name: with one, QtDBus makes a blocking GetNameOwner call.
    for (const QString& key : {portalScheme, portalContrast}) {
        bus_.connect(QString(), portalSettings.path, portalSettings.interface,
                     QStringLiteral("SettingChanged"), {portalGroup, key}, QString(), this,
                     SLOT(askPortal()));
    }
    for (const QString& channel : {xfceSession, xfcePanel}) {
        for (const auto& signal :
             {QStringLiteral("PropertyChanged"), QStringLiteral("PropertyRemoved")}) {
            bus_.connect(QString(), xfceSettings.path, xfceSettings.interface, signal, {channel},
                         QString(), this, SLOT(askXfce()));
        }
    }
    askPortal();
    askXfce();
}

bool DesktopAppearance::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp) {
        decide();
    }
    return QObject::eventFilter(watched, event);
}

void DesktopAppearance::askPortal() {
    // A portal that does not answer takes nothing back.
    ask(portalSettings, portalGroup, portalContrast, [this](const QVariant& value) {
        portalWantsContrast_ = value.isValid() ? value.toUInt() == 1 : portalWantsContrast_;
    });
    ask(portalSettings, portalGroup, portalScheme, [this](const QVariant& value) {
        if (!value.isValid()) {
            return;
        }
        switch (value.toUInt()) {
        case 1:
            portal_ = Appearance::dark;
            break;
        case 2:
            portal_ = Appearance::light;
            break;
        default:
            portal_ = std::nullopt; // no preference
            break;
        }
    });
}

void DesktopAppearance::askXfce() {
    ask(xfceSettings, xfceSession, xfceTheme,
        [this](const QVariant& value) { xfceTheme_ = themeAppearance(value.toString()); });
    ask(xfceSettings, xfcePanel, xfcePanelDark,
        [this](const QVariant& value) { isXfcePanelDark_ = value.toBool(); });
}

void DesktopAppearance::ask(const SettingsService& service, const QString& group,
                            const QString& key, std::function<void(const QVariant& value)> take) {
    askForSetting(bus_, service, group, key, *this,
                  [this, take = std::move(take)](const QVariant& value) {
                      take(value);
                      decide();
                  });
}

void DesktopAppearance::decide() {
    const Appearance local =
        local_.look().appearance.value_or(appearanceOf(QGuiApplication::palette()));
    const Appearance theme = xfceTheme_.value_or(local);
    Appearance desktop = portal_.value_or(theme);
    // Xfce's panel follows the theme, whatever the portal says.
    const bool hasDarkArea =
        hasDarkBar_ || isXfcePanelDark_ || isDark(xfceTheme_.value_or(desktop));
    const Appearance statusArea = hasDarkArea ? Appearance::dark : Appearance::light;
    if (portalWantsContrast_ || hasHighContrast(theme)) {
        desktop = withHighContrast(desktop);
    }
    if (desktop != desktop_ || statusArea != statusArea_) {
        desktop_ = desktop;
        statusArea_ = statusArea;
        observers_.tell();
    }
}

} // namespace tidewell
