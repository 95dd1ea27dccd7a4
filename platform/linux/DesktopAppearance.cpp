#include "platform/linux/DesktopAppearance.h"

#include "platform/linux/ServiceCall.h"

#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace tidewell {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString portalGroup = QStringLiteral("org.freedesktop.appearance");
const QString portalKey = QStringLiteral("color-scheme");

const QString xfceService = QStringLiteral("org.xfce.Xfconf"); // its interface as well
const QString xfcePath = QStringLiteral("/org/xfce/Xfconf");
const QString xfceSettings = QStringLiteral("xsettings");
const QString xfceTheme = QStringLiteral("/Net/ThemeName");
const QString xfcePanel = QStringLiteral("xfce4-panel");
const QString xfcePanelDark = QStringLiteral("/panels/dark-mode");

constexpr std::chrono::seconds patience{25};

/// The value itself: the portal's older method wraps it twice.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

/// Empty for an error.
QVariant valueOf(const QDBusMessage& reply) {
    return reply.type() == QDBusMessage::ReplyMessage ? unwrapped(reply.arguments().value(0))
                                                      : QVariant();
}

/// GNOME's bar is dark in its light theme, too. Relatives name GNOME besides themselves.
bool hasDarkBar(const QString& desktops) {
    const QStringList names = desktops.split(QLatin1Char(':'));
    return names.contains(QStringLiteral("GNOME")) && !names.contains(QStringLiteral("Budgie")) &&
           !names.contains(QStringLiteral("GNOME-Flashback"));
}

Appearance paletteAppearance() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() <
                   palette.color(QPalette::WindowText).lightness()
               ? Appearance::dark
               : Appearance::light;
}

} // namespace

DesktopAppearance::DesktopAppearance(const QDBusConnection& bus, const QString& desktops)
    : bus_(bus)
    , portalOwner_(portalService, bus, QDBusServiceWatcher::WatchForRegistration)
    , xfceOwner_(xfceService, bus, QDBusServiceWatcher::WatchForRegistration)
    , hasDarkBar_(hasDarkBar(desktops)) {
    qGuiApp->installEventFilter(this);
    decide();
    if (!bus_.isConnected()) {
        return;
    }
    connect(&portalOwner_, &QDBusServiceWatcher::serviceRegistered, this, [this] { askPortal(); });
    connect(&xfceOwner_, &QDBusServiceWatcher::serviceRegistered, this, [this] { askXfce(); });
    // From any sender: naming one would make the toolkit wait for the bus to say who that is.
    bus_.connect(QString(), portalPath, portalSettings, QStringLiteral("SettingChanged"),
                 {portalGroup, portalKey}, QString(), this, SLOT(askPortal()));
    for (const QString& channel : {xfceSettings, xfcePanel}) {
        for (const auto& signal :
             {QStringLiteral("PropertyChanged"), QStringLiteral("PropertyRemoved")}) {
            bus_.connect(QString(), xfcePath, xfceService, signal, {channel}, QString(), this,
                         SLOT(askXfce()));
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

// Started for us if need be: it is there on every desktop that has one, for all programs.
void DesktopAppearance::askPortal() {
    auto question = QDBusMessage::createMethodCall(portalService, portalPath, portalSettings,
                                                   QStringLiteral("Read"));
    question << portalGroup << portalKey;
    callService(bus_, question, patience, *this, [this](const auto& reply) {
        switch (valueOf(reply).toUInt()) {
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
        decide();
    });
}

void DesktopAppearance::askXfce() {
    askXfce(xfceSettings, xfceTheme, [this](const QVariant& value) {
        const QString name = value.toString();
        xfceTheme_ = name.isEmpty() ? std::nullopt : std::optional(themeAppearance(name));
    });
    askXfce(xfcePanel, xfcePanelDark,
            [this](const QVariant& value) { isXfcePanelDark_ = value.toBool(); });
}

// Not started for us: where it does not run, this is not Xfce.
void DesktopAppearance::askXfce(const QString& channel, const QString& property,
                                std::function<void(const QVariant& value)> answer) {
    auto question = QDBusMessage::createMethodCall(xfceService, xfcePath, xfceService,
                                                   QStringLiteral("GetProperty"));
    question << channel << property;
    question.setAutoStartService(false);
    callService(bus_, question, patience, *this,
                [this, answer = std::move(answer)](const auto& reply) {
                    answer(valueOf(reply));
                    decide();
                });
}

void DesktopAppearance::decide() {
    const Appearance fallback = xfceTheme_ ? *xfceTheme_ : paletteAppearance();
    const Appearance desktop = portal_.value_or(fallback);
    // Xfce's panel follows the theme, whatever the portal says.
    const Appearance statusArea =
        hasDarkBar_ || isXfcePanelDark_ ? Appearance::dark : xfceTheme_.value_or(desktop);
    if (desktop != desktop_ || statusArea != statusArea_) {
        desktop_ = desktop;
        statusArea_ = statusArea;
        observers_.tell();
    }
}

Appearance themeAppearance(const QString& name) {
    const qsizetype found = name.indexOf(QLatin1String("dark"), 0, Qt::CaseInsensitive);
    const bool isDark =
        found >= 0 && !name.mid(found + 4).startsWith(QLatin1String("er"), Qt::CaseInsensitive);
    return isDark ? Appearance::dark : Appearance::light;
}

} // namespace tidewell
