#include "platform/linux/DesktopAnimations.h"
#include "platform/linux/DesktopAppearance.h"
#include "tests/platform/linux/PrivateBus.h"

#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace tidewell {
namespace {

using Both = std::pair<Appearance, Appearance>; // desktop, status area
constexpr auto light = Appearance::light;
constexpr auto dark = Appearance::dark;

Both both(const DesktopAppearance& appearance) {
    return {appearance.desktop(), appearance.statusArea()};
}

/// As the portal's older method wraps a value once more.
QVariant wrapped(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

/// A service that knows a value of each property, and fails where that is invalid.
struct Settings {
    Settings(const QDBusConnection& bus, const QString& name, const QString& path,
             const QString& interface, const QString& signal)
        : service(bus, name, path,
                  [this](const QDBusMessage& call, const QDBusConnection& connection) {
                      const QVariant value = values.value(call.arguments().value(1).toString());
                      connection.send(value.isValid()
                                          ? call.createReply(wrapped(value))
                                          : call.createErrorReply(QDBusError::Failed, {}));
                  })
        , change(QDBusMessage::createSignal(path, interface, signal))
        , question(QDBusMessage::createMethodCall(name, path, interface, u"Get"_s)) {}

    void set(const QString& group, const QString& property, const QVariant& value) {
        values[property] = value;
        change.setArguments({group, property, wrapped(0)});
        service.bus().send(change);
    }

    QVariantMap values;
    FakeService service;
    QDBusMessage change;
    QDBusMessage question;
};

class DesktopSettings : public BusTest {
protected:
    void startServices() {
        portal.emplace(bus.connect(), u"org.freedesktop.portal.Desktop"_s,
                       u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s,
                       u"SettingChanged"_s);
        xfce.emplace(bus.connect(), u"org.xfce.Xfconf"_s, u"/org/xfce/Xfconf"_s,
                     u"org.xfce.Xfconf"_s, u"PropertyChanged"_s);
    }

    std::optional<Settings> portal;
    std::optional<Settings> xfce;
};

TEST_F(DesktopSettings, GiveAppearanceByThePortalThenXfcesThemeThenThePalette) {
    DesktopAppearance appearance(bus.connect(), u"XFCE"_s);
    EXPECT_EQ(both(appearance), Both(light, light)) << "the palette answers at once";
    Both told = both(appearance);
    const auto subscription = appearance.didChange([&] {
        EXPECT_NE(both(appearance), told) << "only changes are told";
        told = both(appearance);
    });
    const auto becomes = [&told](Appearance desktop, Appearance statusArea) {
        return comesTrue([&, statusArea] { return told == Both(desktop, statusArea); });
    };

    startServices(); // later than the program
    portal->values[u"color-scheme"_s] = wrapped(1U);
    xfce->values[u"/Net/ThemeName"_s] = u"Greybird"_s;
    EXPECT_TRUE(becomes(dark, light)) << "Xfce's panel follows the theme";
    portal->set(u"org.freedesktop.appearance"_s, u"color-scheme"_s, 0U);
    xfce->set(u"xsettings"_s, u"/Net/ThemeName"_s, u"Greybird-dark"_s);
    EXPECT_TRUE(becomes(dark, dark));
    xfce->set(u"xsettings"_s, u"/Net/ThemeName"_s, u"Arc-Darker"_s);
    EXPECT_TRUE(becomes(light, light));
    xfce->set(u"xfce4-panel"_s, u"/panels/dark-mode"_s, true);
    EXPECT_TRUE(becomes(light, dark));
    xfce->set(u"xfce4-panel"_s, u"/panels/dark-mode"_s, {});
    EXPECT_TRUE(becomes(light, light));
    xfce->set(u"xsettings"_s, u"/Net/ThemeName"_s, {});
    const QPalette usual = QGuiApplication::palette();
    EXPECT_TRUE(comesTrue([&] {
        QGuiApplication::setPalette(QPalette(Qt::black));
        const bool follows = both(appearance) == Both(dark, dark);
        QGuiApplication::setPalette(usual);
        return follows;
    }));
}

TEST_F(DesktopSettings, TellGnomesDarkBarFromThoseOfItsRelatives) {
    for (const auto& [desktops, area] :
         {std::pair(u"ubuntu:GNOME"_s, dark), std::pair(u"KDE"_s, light),
          std::pair(u"Budgie:GNOME"_s, light), std::pair(u"GNOME-Flashback:GNOME"_s, light)}) {
        EXPECT_EQ(both(DesktopAppearance(noBus, desktops)), Both(light, area))
            << desktops.toStdString();
    }
}

TEST_F(DesktopSettings, WantAnimationsUnlessOneSaysNo) {
    startServices();
    struct Case {
        Settings& settings;
        QString key;
        QVariant value;
        bool expected;
    };
    for (const auto& [settings, key, value, expected] : {
             Case{*portal, u"reduced-motion"_s, 1U, false},
             Case{*portal, u"enable-animations"_s, wrapped(false), false},
             Case{*portal, u"AnimationDurationFactor"_s, u"0"_s, false},
             Case{*xfce, u"/Gtk/EnableAnimations"_s, false, false},
             Case{*xfce, u"/Gtk/EnableAnimations"_s, QStringList(), true},
         }) {
        settings.values = {{key, value}};
        const QDBusConnection program = bus.connect();
        const DesktopAnimations animations(program);
        answerTo(portal->question, program); // comes after the others
        answerTo(xfce->question, program);
        EXPECT_EQ(animations.areWanted(), expected)
            << key.toStdString() << value.toString().toStdString();
        settings.values.clear();
    }
}

} // namespace
} // namespace tidewell
