#include "platform/linux/DesktopNotificationCenter.h"
#include "tests/fakes/ManualClock.h"
#include "tests/platform/linux/PrivateBus.h"

#include <QDBusMetaType>

namespace tidewell {
namespace {

using Authorization = UserNotificationCenter::Authorization;
using Limits = DesktopNotificationCenter::Limits;
using testing::HasSubstr;
using namespace std::chrono_literals;

const QString identifier = u"net.tidewell.Tidewell"_s;
constexpr Limits patient{20s, 20s, 20s};

/// A notification daemon that remembers what it was to show.
struct Daemon {
    explicit Daemon(const QDBusConnection& bus)
        : service(bus, u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
                  [this](const QDBusMessage& call, const QDBusConnection& connection) {
                      members << call.member();
                      const bool isNotify = call.member() == u"Notify"_s;
                      if (isNotify) {
                          EXPECT_EQ(call.signature(), u"susssasa{sv}i"_s);
                          shown = call.arguments();
                      }
                      if (isNotify && refuses) {
                          connection.send(call.createErrorReply(u"test.Refused"_s, u"enough"_s));
                      } else if (call.member() != silentAt) {
                          connection.send(call.createReply(isNotify ? QVariant(1U) : capabilities));
                      }
                  }) {}

    QVariant capabilities = QStringList();
    bool refuses = false;
    QString silentAt;
    QStringList members;
    QVariantList shown;
    FakeService service;
};

class NotificationCenter : public BusTest {
protected:
    DesktopNotificationCenter center(const QDBusConnection& connection, Limits limits = patient) {
        return {connection, clock, u"Tidewell"_s, records, limits};
    }

    /// "allowed", "denied" or what went wrong.
    std::string authorization(const QDBusConnection& connection, Limits limits = patient) {
        DesktopNotificationCenter asked = center(connection, limits);
        std::string given;
        asked.requestAuthorization(AuthorizationOptions::alert, [&given](Authorization answer) {
            const auto* const error = std::get_if<PlatformError>(&answer);
            given += error != nullptr         ? error->description
                     : std::get<bool>(answer) ? "allowed"
                                              : "denied";
        });
        EXPECT_EQ(given, "") << "answered within the call";
        EXPECT_TRUE(comesTrue([&given] { return !given.empty(); }));
        return given;
    }

    /// "delivered" or what went wrong.
    std::string deliver(UserNotificationCenter& center,
                        std::optional<std::string> subtitle = std::nullopt) {
        std::string result;
        center.add({"1", "Title & <b>", std::move(subtitle), "Body & <b>", 1s},
                   [&result](const std::optional<PlatformError>& error) {
                       result += error ? error->description : "delivered";
                   });
        clock.advance(1);
        EXPECT_EQ(result, "") << "answered within the call";
        EXPECT_TRUE(comesTrue([&result] { return !result.empty(); }));
        return result;
    }

    ManualClock clock;
    NotificationRecords records{identifier, {}, {}, {}};
};

TEST_F(NotificationCenter, NeedsABusAndAServiceThatRunsOrCanBeStarted) {
    EXPECT_THAT(authorization(noBus), HasSubstr("no message bus"));
    EXPECT_THAT(authorization(bus.connect()), HasSubstr("no notification service"));
    PrivateBus activating("org.freedesktop.Notifications");
    EXPECT_EQ(authorization(activating.connect()), "allowed");
}

TEST_F(NotificationCenter, IsDeniedByThisDesktopsRecordsOfThisProgramOnly) {
    using Permissions = QMap<QString, QStringList>;
    qDBusRegisterMetaType<Permissions>();
    const Daemon daemon(bus.connect());
    QString portal;
    const FakeService store(
        bus.connect(), u"org.freedesktop.impl.portal.PermissionStore"_s,
        u"/org/freedesktop/impl/portal/PermissionStore"_s,
        [&](const QDBusMessage& call, const QDBusConnection& connection) {
            EXPECT_EQ(call.arguments(), QVariantList({u"notifications"_s, u"notification"_s}));
            const Permissions permissions{{u"org.other"_s, {u"no"_s}}, {identifier, {portal}}};
            if (portal != u"hangs"_s) {
                connection.send(call.createReply(QVariantList(
                    {QVariant::fromValue(permissions), QVariant::fromValue(QDBusVariant(0))})));
            }
        });

    const QStringList gnome{u"ubuntu"_s, u"GNOME"_s};
    const QStringList plasma{u"KDE"_s};
    const std::string off = "[Applications][net.tidewell.Tidewell]\nShowPopups = False\n";
    const std::string other = "[Applications][org.other]\nShowPopups=false\n";
    const std::string offIfAskedWell =
        "[ \"$*\" = 'get org.gnome.desktop.notifications.application:/org/gnome/desktop/"
        "notifications/application/net-tidewell-tidewell/ enable' ] && echo false";
    struct Case {
        std::string expected;
        QString portal;
        QStringList desktops;
        std::string gsettings;
        std::string plasmaSettings;
    };
    for (const Case& test : {
             Case{"denied", u"no"_s, {}, {}, {}},
             Case{"allowed", u"hangs"_s, {}, {}, {}},
             Case{"allowed", {}, plasma, "echo false", {}},
             Case{"denied", {}, gnome, offIfAskedWell, {}},
             Case{"allowed", {}, gnome, "echo true", {}},
             Case{"allowed", {}, gnome, "exec sleep 1000", {}},
             Case{"allowed", {}, gnome, {}, off},
             Case{"denied", {}, plasma, {}, off},
             Case{"allowed", {}, plasma, {}, other},
         }) {
        const TemporaryFolder folder;
        writeText(folder.path() / "plasmanotifyrc", test.plasmaSettings);
        const auto tool = folder.path() / "gsettings";
        writeText(tool, "#!/bin/sh\n" + test.gsettings);
        std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
        portal = test.portal;
        records.desktops = test.desktops;
        records.configurationPaths = {u"/nowhere"_s, QString::fromStdString(folder.path())};
        records.gsettings = QString::fromStdString(tool);
        const bool hangs = portal == u"hangs"_s || test.gsettings.starts_with("exec");
        EXPECT_EQ(authorization(bus.connect(), {20s, hangs ? 60ms : 20s, 20s}), test.expected)
            << test.portal.toStdString() << test.gsettings << test.plasmaSettings;
    }
}

TEST_F(NotificationCenter, SendsWhatTheDaemonCanShowAndReportsThatItRefusesOrDies) {
    Daemon daemon(bus.connect());
    DesktopNotificationCenter used = center(bus.connect());
    EXPECT_EQ(deliver(used, "Sub"), "delivered");
    EXPECT_EQ(daemon.shown.mid(3, 2),
              QVariantList({u"Title & <b> – Sub – Body & <b>"_s, QString()}));
    daemon.capabilities = QStringList({u"body"_s, u"body-markup"_s});
    EXPECT_EQ(deliver(used), "delivered");
    EXPECT_EQ(daemon.shown.mid(3, 2), QVariantList({u"Title & <b>"_s, u"Body &amp; &lt;b&gt;"_s}));

    daemon.refuses = true;
    EXPECT_EQ(deliver(used), "test.Refused: enough");
    daemon.refuses = false;
    daemon.silentAt = u"Notify"_s;
    std::optional<PlatformError> failure;
    used.add({}, [&failure](const auto& error) { failure = error; });
    daemon.members.clear();
    clock.advance(1);
    ASSERT_TRUE(comesTrue([&] { return daemon.members.contains(u"Notify"_s); }));
    daemon.service.die();
    ASSERT_TRUE(comesTrue([&] { return failure.has_value(); }));
    EXPECT_THAT(failure->description, HasSubstr("disconnected"));
}

TEST_F(NotificationCenter, WaitsForTheDelayAndDropsItsAnswersWhenItIsDestroyed) {
    Daemon daemon(bus.connect());
    daemon.silentAt = u"GetCapabilities"_s;
    const auto witness = std::make_shared<int>();
    {
        DesktopNotificationCenter used = center(bus.connect());
        for (const auto delay : {1s, 2s}) {
            used.add({"1", "T", {}, "B", delay}, [witness](const auto&) { FAIL(); });
        }
        clock.advance(1);
        EXPECT_EQ(clock.pendingAlarms(), 1U);
        ASSERT_TRUE(comesTrue([&] { return daemon.members.size() == 1; }));
        used.requestAuthorization(AuthorizationOptions::alert, [witness](const auto&) { FAIL(); });
    }
    clock.advance(1); // the alarm finds nobody
    EXPECT_EQ(witness.use_count(), 1);
}

} // namespace
} // namespace tidewell
