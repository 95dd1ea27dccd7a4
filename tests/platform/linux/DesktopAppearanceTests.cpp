#include "platform/linux/DesktopAnimations.h"
#include "platform/linux/DesktopAppearance.h"
#include "platform/linux/ServiceCall.h"
#include "tests/platform/linux/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

namespace tidewell {
namespace {

using namespace std::chrono_literals;

using Both = std::pair<Appearance, Appearance>; // desktop, status area
constexpr auto light = Appearance::light;
constexpr auto dark = Appearance::dark;

Both both(const DesktopAppearance& appearance) {
    return {appearance.desktop(), appearance.statusArea()};
}

/// A settings service: a value for the last two texts of a question, an error without one.
struct Settings {
    Settings(PrivateBus& bus, const char* name, const char* path)
        : service(bus.connect(), QLatin1String(name), QLatin1String(path),
                  [this](const QDBusMessage& call, const QDBusConnection& connection) {
                      const auto value = values.find(call.arguments().value(1).toString());
                      connection.send(value == values.end()
                                          ? call.createErrorReply(QDBusError::Failed, {})
                                          : call.createReply(QVariant::fromValue(*value)));
                  }) {}

    /// Tells the program of a change.
    void tell(const char* path, const char* interface, const char* member,
              const QVariantList& arguments) const {
        auto signal = QDBusMessage::createSignal(QLatin1String(path), QLatin1String(interface),
                                                 QLatin1String(member));
        signal.setArguments(arguments);
        service.bus().send(signal);
    }

    QHash<QString, QDBusVariant> values;
    FakeService service;
};

QVariant variant(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

constexpr auto xfcePath = "/org/xfce/Xfconf";
constexpr auto xfceService = "org.xfce.Xfconf";
constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto portalService = "org.freedesktop.portal.Desktop";
constexpr auto portalSettings = "org.freedesktop.portal.Settings";

TEST(DesktopAppearance, FollowsThePortalThenXfcesThemeThenThePalette) {
    PrivateBus bus;
    Settings portal(bus, portalService, portalPath);
    Settings xfce(bus, xfceService, xfcePath);
    // The older method wraps the value once more.
    portal.values[QStringLiteral("color-scheme")] = QDBusVariant(variant(1U));
    xfce.values[QStringLiteral("/Net/ThemeName")] = QDBusVariant(QStringLiteral("Greybird"));

    DesktopAppearance appearance(bus.connect(), QStringLiteral("XFCE"));
    EXPECT_EQ(both(appearance), Both(light, light)) << "the palette answers at once";
    EXPECT_TRUE(comesTrue([&] { return both(appearance) == Both(dark, light); }))
        << "Xfce's panel follows the theme";
    Both told = both(appearance);
    const auto subscription = appearance.didChange([&] {
        EXPECT_NE(both(appearance), told) << "only changes are told";
        told = both(appearance);
    });

    const auto setPortal = [&portal](unsigned value) {
        portal.values[QStringLiteral("color-scheme")] = QDBusVariant(value);
        portal.tell(portalPath, portalSettings, "SettingChanged",
                    {QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme"),
                     variant(value)});
    };
    const auto setXfce = [&xfce](const char* channel, const char* property, const QVariant& value) {
        xfce.values[QLatin1String(property)] = QDBusVariant(value);
        xfce.tell(xfcePath, xfceService, "PropertyChanged",
                  {QLatin1String(channel), QLatin1String(property), variant(value)});
    };
    const auto removeXfce = [&xfce](const char* channel, const char* property) {
        xfce.values.remove(QLatin1String(property));
        xfce.tell(xfcePath, xfceService, "PropertyRemoved",
                  {QLatin1String(channel), QLatin1String(property)});
    };
    setPortal(2);
    EXPECT_TRUE(comesTrue([&] { return both(appearance) == Both(light, light); }));
    setPortal(0);
    setXfce("xsettings", "/Net/ThemeName", QStringLiteral("Greybird-dark"));
    EXPECT_TRUE(comesTrue([&] { return both(appearance) == Both(dark, dark); }));
    setXfce("xfce4-panel", "/panels/dark-mode", true);
    setXfce("xsettings", "/Net/ThemeName", QStringLiteral("Greybird"));
    EXPECT_TRUE(comesTrue([&] { return both(appearance) == Both(light, dark); }));
    removeXfce("xfce4-panel", "/panels/dark-mode");
    EXPECT_TRUE(comesTrue([&] { return both(appearance) == Both(light, light); }));
    EXPECT_EQ(told, both(appearance));

    removeXfce("xsettings", "/Net/ThemeName");
    const QPalette usual = QGuiApplication::palette();
    EXPECT_TRUE(comesTrue([&] {
        QGuiApplication::setPalette(QPalette(Qt::black));
        const bool follows = both(appearance) == Both(dark, dark);
        QGuiApplication::setPalette(usual);
        return follows;
    }));
}

TEST(DesktopAppearance, AsksAServiceThatComesLater) {
    PrivateBus bus;
    DesktopAppearance appearance(bus.connect(), {});
    Settings xfce(bus, xfceService, xfcePath);
    xfce.values[QStringLiteral("/Net/ThemeName")] = QDBusVariant(QStringLiteral("Arc-Dark"));
    EXPECT_TRUE(comesTrue([&] { return both(appearance) == Both(dark, dark); }));
}

TEST(DesktopAppearance, KnowsGnomesBarAndManagesWithoutABus) {
    const QDBusConnection none(QStringLiteral("no such connection"));
    for (const auto& [desktops, area] :
         {std::pair("GNOME", dark), std::pair("ubuntu:GNOME", dark), std::pair("KDE", light),
          std::pair("Budgie:GNOME", light), std::pair("GNOME-Flashback:GNOME", light)}) {
        EXPECT_EQ(both(DesktopAppearance(none, QLatin1String(desktops))), Both(light, area))
            << desktops;
    }
    EXPECT_EQ(themeAppearance(QStringLiteral("Adwaita-DARK")), dark);
    EXPECT_EQ(themeAppearance(QStringLiteral("Arc-Darker")), light);
}

TEST(DesktopAnimations, AreWantedUnlessASettingOfTheDesktopSaysNo) {
    PrivateBus bus;
    Settings portal(bus, portalService, portalPath);
    Settings xfce(bus, xfceService, xfcePath);
    const auto areWanted = [&](Settings& settings, const char* key, const QVariant& value) {
        settings.values = {{QLatin1String(key), QDBusVariant(value)}};
        const QDBusConnection program = bus.connect();
        const DesktopAnimations animations(program);
        // Each service answers in turn, so these answers are the last.
        QObject context;
        int answers = 0;
        for (const auto& [service, path] :
             {std::pair(portalService, portalPath), std::pair(xfceService, xfcePath)}) {
            callService(program,
                        QDBusMessage::createMethodCall(QLatin1String(service), QLatin1String(path),
                                                       QLatin1String(service),
                                                       QStringLiteral("Read")),
                        10s, context, [&](const QDBusMessage&) { ++answers; });
        }
        EXPECT_TRUE(comesTrue([&] { return answers == 2; }));
        settings.values.clear();
        return animations.areWanted();
    };
    EXPECT_FALSE(areWanted(portal, "reduced-motion", 1U));
    EXPECT_FALSE(areWanted(portal, "enable-animations", variant(false)));
    EXPECT_FALSE(areWanted(portal, "AnimationDurationFactor", QStringLiteral("0")));
    EXPECT_FALSE(areWanted(xfce, "/Gtk/EnableAnimations", false));
    EXPECT_TRUE(areWanted(portal, "reduced-motion", 0U));
    EXPECT_TRUE(areWanted(portal, "AnimationDurationFactor", QStringLiteral("1.5")));
    EXPECT_TRUE(areWanted(portal, "AnimationDurationFactor", QStringLiteral("quick")));
    EXPECT_TRUE(areWanted(xfce, "/Gtk/EnableAnimations", true));
    EXPECT_TRUE(areWanted(xfce, "/Gtk/EnableAnimations", QStringList()));
}

} // namespace
} // namespace tidewell
