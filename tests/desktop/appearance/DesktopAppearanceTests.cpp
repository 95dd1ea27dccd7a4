#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/appearance/DesktopLook.h"
#include "tests/desktop/PrivateBus.h"

#include <QApplication>
#include <QDBusVariant>
#include <QFontDatabase>
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

/// The portal and Xfce's settings; a property that has no value is an error there.
class DesktopSettings : public BusTest {
protected:
    void startServices() {
        const auto answer = [this](const QDBusMessage& call, const QDBusConnection& connection) {
            const QVariant value = values.value(call.arguments().value(1).toString());
            connection.send(value.isValid() ? call.createReply(wrapped(value))
                                            : call.createErrorReply(QDBusError::Failed, {}));
        };
        portal.emplace(bus.connect(), u"org.freedesktop.portal.Desktop"_s, portalPath, answer);
        xfce.emplace(bus.connect(), u"org.xfce.Xfconf"_s, xfcePath, answer);
    }
    void set(const QString& group, const QString& property, const QVariant& value) {
        values[property] = value;
        const bool isXfce = property.startsWith(u'/');
        auto change =
            isXfce
                ? QDBusMessage::createSignal(xfcePath, u"org.xfce.Xfconf"_s, u"PropertyChanged"_s)
                : QDBusMessage::createSignal(portalPath, u"org.freedesktop.portal.Settings"_s,
                                             u"SettingChanged"_s);
        (isXfce ? xfce : portal)->bus().send(change << group << property << wrapped(0));
    }

    const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
    const QString xfcePath = u"/org/xfce/Xfconf"_s;
    QVariantMap values;
    LocalSettings local{{}};
    std::optional<FakeService> portal;
    std::optional<FakeService> xfce;
};

TEST_F(DesktopSettings, GiveAppearanceByThePortalThenXfcesThemeThenThePalette) {
    DesktopAppearance appearance(bus.connect(), u"XFCE"_s, local);
    Both told = both(appearance);
    EXPECT_EQ(told, Both(light, light)) << "the palette answers at once";
    const auto subscription = appearance.didChange([&] {
        EXPECT_NE(both(appearance), told) << "only changes are told";
        told = both(appearance);
    });
    const auto becomes = [&told](Appearance desktop, Appearance statusArea) {
        return comesTrue([&, statusArea] { return told == Both(desktop, statusArea); });
    };

    values = {{u"color-scheme"_s, wrapped(1U)}, {u"/Net/ThemeName"_s, u"Greybird"_s}};
    startServices(); // later than the program
    EXPECT_TRUE(becomes(dark, light)) << "Xfce's panel follows the theme";
    set(u"org.freedesktop.appearance"_s, u"color-scheme"_s, 0U);
    set(u"xsettings"_s, u"/Net/ThemeName"_s, u"Greybird-dark"_s);
    EXPECT_TRUE(becomes(dark, dark));
    set(u"xsettings"_s, u"/Net/ThemeName"_s, u"Arc-Darker"_s);
    set(u"xfce4-panel"_s, u"/panels/dark-mode"_s, true);
    EXPECT_TRUE(becomes(light, dark));
    set(u"xsettings"_s, u"/Net/ThemeName"_s, u"HighContrastInverse"_s);
    EXPECT_TRUE(becomes(Appearance::highContrastDark, dark));
    set(u"org.freedesktop.appearance"_s, u"contrast"_s, 1U);
    set(u"xsettings"_s, u"/Net/ThemeName"_s, {});
    set(u"xfce4-panel"_s, u"/panels/dark-mode"_s, {});
    EXPECT_TRUE(becomes(Appearance::highContrastLight, light));
    set(u"org.freedesktop.appearance"_s, u"contrast"_s, 0U);
    EXPECT_TRUE(becomes(light, light));
    const QPalette usual = QGuiApplication::palette();
    QGuiApplication::setPalette(QPalette(QColor(0x202020)));
    EXPECT_TRUE(becomes(dark, dark));
    QGuiApplication::setPalette(usual);
}

TEST_F(DesktopSettings, TellGnomesDarkBarFromThoseOfItsRelatives) {
    for (const auto& [desktops, area] :
         {std::pair(u"ubuntu:GNOME"_s, dark), std::pair(u"KDE"_s, light),
          std::pair(u"Budgie:GNOME"_s, light), std::pair(u"GNOME-Flashback:GNOME"_s, light)}) {
        EXPECT_EQ(both(DesktopAppearance(noBus, desktops, local)), Both(light, area))
            << desktops.toStdString();
    }
}

TEST_F(DesktopSettings, WantAnimationsUnlessOneSaysNo) {
    startServices();
    for (const auto& [key, value] : {std::pair(u"reduced-motion"_s, QVariant(1U)),
                                     {u"enable-animations"_s, wrapped(false)},
                                     {u"AnimationDurationFactor"_s, u"0"_s},
                                     {u"/Gtk/EnableAnimations"_s, false}}) {
        values = {{key, value}};
        const DesktopLook look(bus.connect(), {});
        EXPECT_TRUE(look.animationsAreWanted()) << "not known yet";
        EXPECT_TRUE(comesTrue([&] { return !look.animationsAreWanted(); })) << key.toStdString();
    }
}

TEST_F(DesktopSettings, GiveTheFontAndTheDesktopsOwnBeforeGnomes) {
    startServices();
    const QString family = QFontDatabase::families().value(0);
    const QFont usual = QApplication::font();
    for (const auto& [key, value, size] :
         {std::tuple(u"font-name"_s, family + u" Bold 11"_s, 11),
          {u"font"_s, family + u",20,-1,5,50,0,0,0,0,0"_s, 20},
          {u"/Gtk/FontName"_s, family + u' ' + family + u", 10"_s, 10}}) {
        QApplication::setFont(QFont(u"None such"_s, 7));
        values = {{u"font-name"_s, u"Not Installed 10"_s}, {key, value}};
        const DesktopLook look(bus.connect(), {});
        QWidget window;
        window.ensurePolished();
        QCoreApplication::processEvents();
        EXPECT_EQ(QApplication::font().family(), u"None such"_s) << "nothing shows a text yet";
        QWidget(&window).ensurePolished();
        EXPECT_TRUE(comesTrue([&] { return QApplication::font().family() == family; }))
            << key.toStdString() << ": " << family.toStdString() << " is not "
            << QApplication::font().family().toStdString();
        EXPECT_EQ(QApplication::font().pointSize(), size);
    }
    QApplication::setFont(usual);
}

} // namespace
} // namespace tidewell
