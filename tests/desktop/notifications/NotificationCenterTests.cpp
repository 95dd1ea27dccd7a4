#include "desktop/notifications/DesktopNotificationCenter.h"
#include "tests/desktop/PrivateBus.h"
#include "tests/fakes/ManualClock.h"

#include <QDBusMetaType>
#include <QTimer>

namespace tidewell {
namespace {

using testing::HasSubstr;
using namespace std::chrono_literals;

const QString identifier = u"net.tidewell.Tidewell"_s;

/// A notification daemon that remembers what it was asked, and fails at the calls it is told to.
struct Daemon {
    explicit Daemon(const QDBusConnection& bus)
        : service(bus, u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
                  [this](const QDBusMessage& call, const QDBusConnection& connection) {
                      calls << call;
                      if (call.member() == refusedCall) {
                          connection.send(call.createErrorReply(u"test.Refused"_s, u"enough"_s));
                      } else if (call.member() == deadlyCall) {
                          QTimer::singleShot(0, &service, [this] { service.die(); });
                      } else if (call.member() != unansweredCall) {
                          connection.send(call.createReply(capabilities));
                      }
                  }) {}

    QVariant capabilities = QStringList();
    QString refusedCall;
    QString deadlyCall;
    QString unansweredCall;
    QList<QDBusMessage> calls;
    FakeService service;
};

class NotificationCenter : public BusTest {
protected:
    DesktopNotificationCenter center(const QDBusConnection& connection) {
        return {connection, clock, u"Tidewell"_s, records, {20s, recordsLimit, 20s}};
    }

    /// "allowed", "denied" or what went wrong.
    std::string authorization(const QDBusConnection& connection) {
        DesktopNotificationCenter asked = center(connection);
        std::string given;
        asked.requestAuthorization(
            AuthorizationOptions::alert, [&given](const Result<bool>& answer) {
                given += !answer ? answer.error().description() : *answer ? "allowed" : "denied";
            });
        EXPECT_EQ(given, "") << "answered within the call";
        EXPECT_TRUE(comesTrue([&given] { return !given.empty(); }));
        return given;
    }

    ManualClock clock;
    PermissionRecords records{identifier, {}, {}, {}};
    std::chrono::milliseconds recordsLimit = 20s;
};

TEST_F(NotificationCenter, NeedsABusAndAService) {
    EXPECT_THAT(authorization(noBus), HasSubstr("no message bus"));
    EXPECT_THAT(authorization(bus.connect()), HasSubstr("no notification service"));
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
    const TemporaryFolder folder;
    const auto tool = folder.path() / "gsettings";
    writeText(tool, "");
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    records.configurationPaths = {u"/nowhere"_s, QString::fromStdString(folder.path())};
    records.gsettings = QString::fromStdString(tool);

    const std::string off = "[Applications][net.tidewell.Tidewell]\nShowPopups = False\n";
    const std::string other = "[Applications][org.other]\nShowPopups=false\n";
    const std::string offIfAskedWell =
        "[ \"$*\" = 'get org.gnome.desktop.notifications.application:/org/gnome/desktop/"
        "notifications/application/net-tidewell-tidewell/ enable' ] && echo false";
    const std::string sleep = "exec sleep 1000";
    using Case = std::tuple<std::string, QString, QString, std::string, std::string>;
    for (const auto& [expected, answer, desktop, gsettings, plasmaSettings] :
         {Case("denied", u"no"_s, {}, {}, {}), Case("allowed", u"hangs"_s, {}, {}, {}),
          Case("allowed", {}, u"KDE"_s, "echo false", {}),
          Case("denied", {}, u"GNOME"_s, offIfAskedWell, {}),
          Case("allowed", {}, u"GNOME"_s, "echo true", {}),
          Case("allowed", {}, u"GNOME"_s, sleep, {}), Case("allowed", {}, u"GNOME"_s, {}, off),
          Case("denied", {}, u"KDE"_s, {}, off), Case("allowed", {}, u"KDE"_s, {}, other)}) {
        portal = answer;
        records.desktops = {u"ubuntu"_s, desktop};
        writeText(tool, "#!/bin/sh\n" + gsettings);
        writeText(folder.path() / "plasmanotifyrc", plasmaSettings);
        recordsLimit = portal == u"hangs"_s || gsettings == sleep ? 60ms : 20000ms;
        EXPECT_EQ(authorization(bus.connect()), expected)
            << portal.toStdString() << gsettings << plasmaSettings;
    }
}

TEST_F(NotificationCenter, SendsWhatTheDaemonCanShowAndReportsThatItRefusesOrDies) {
    Daemon daemon(bus.connect());
    DesktopNotificationCenter used = center(bus.connect());
    const auto deliver = [&] {
        std::string result;
        used.add({"1", "Title & <b>", "Sub", "Body & <b>", 1s}, [&result](const Result<>& shown) {
            result += shown ? "delivered" : shown.error().description();
        });
        clock.advance(1);
        EXPECT_TRUE(comesTrue([&result] { return !result.empty(); }));
        return result;
    };
    const auto shown = [&daemon] { return daemon.calls.back().arguments().mid(3, 2); };
    EXPECT_EQ(deliver(), "delivered");
    EXPECT_EQ(shown(), QVariantList({u"Title & <b> – Sub – Body & <b>"_s, QString()}));
    daemon.capabilities = QStringList({u"body"_s, u"body-markup"_s});
    EXPECT_EQ(deliver(), "delivered");
    EXPECT_EQ(shown(), QVariantList({u"Title & <b>"_s, u"Sub\nBody &amp; &lt;b&gt;"_s}));

    daemon.refusedCall = u"Notify"_s;
    EXPECT_EQ(deliver(), "test.Refused: enough");
    daemon.deadlyCall = std::exchange(daemon.refusedCall, {});
    EXPECT_THAT(deliver(), HasSubstr("disconnected"));
}

TEST_F(NotificationCenter, WaitsForTheDelayAndDropsItsAnswersWhenItIsDestroyed) {
    Daemon daemon(bus.connect());
    daemon.unansweredCall = u"GetCapabilities"_s;
    const auto witness = std::make_shared<int>();
    {
        DesktopNotificationCenter used = center(bus.connect());
        for (const auto delay : {1s, 2s}) {
            used.add({"1", "T", {}, "B", delay}, [witness](const auto&) { FAIL(); });
        }
        clock.advance(1);
        EXPECT_EQ(clock.pendingAlarms(), 1U);
        ASSERT_TRUE(comesTrue([&] { return daemon.calls.size() == 1; }));
        used.requestAuthorization(AuthorizationOptions::alert, [witness](const auto&) { FAIL(); });
    }
    clock.advance(1); // the alarm finds nobody
    EXPECT_EQ(witness.use_count(), 1);
}

} // namespace
} // namespace tidewell
