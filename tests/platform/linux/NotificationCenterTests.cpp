#include "platform/linux/DesktopNotificationCenter.h"
#include "tests/fakes/ManualClock.h"
#include "tests/platform/linux/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMetaType>

namespace tidewell {
namespace {

using Authorization = UserNotificationCenter::Authorization;
using Limits = DesktopNotificationCenter::Limits;
using testing::HasSubstr;
using namespace std::chrono_literals;

const QString identifier = u"net.tidewell.Tidewell"_s;
constexpr Limits patient{20s, 20s, 20s};
constexpr Limits shortOfRecords{20s, 60ms, 20s};

/// A notification daemon with the given capabilities, which remembers what it was to show.
struct Daemon {
    Daemon(const QDBusConnection& bus, const QStringList& capabilities)
        : service(
              bus, u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
              [this, capabilities](const QDBusMessage& call, const QDBusConnection& connection) {
                  ++calls;
                  if (call.member() == silentAt) {
                      return;
                  }
                  if (call.member() == u"GetCapabilities"_s) {
                      connection.send(call.createReply(QVariant(capabilities)));
                  } else if (call.member() == u"Notify"_s && refusal.isEmpty()) {
                      EXPECT_EQ(call.signature(), u"susssasa{sv}i"_s);
                      shown.push_back(call.arguments());
                      connection.send(call.createReply(1U));
                  } else {
                      connection.send(call.createErrorReply(refusal, u"enough"_s));
                  }
              }) {}

    int calls = 0;
    QString silentAt;
    QString refusal;
    std::vector<QVariantList> shown;
    FakeService service;
};

class NotificationCenter : public testing::Test {
protected:
    DesktopNotificationCenter center(Limits limits = patient) {
        return {bus.connect(), clock, u"Tidewell"_s, records, limits};
    }

    static Authorization authorization(UserNotificationCenter& center) {
        std::optional<Authorization> given;
        center.requestAuthorization(AuthorizationOptions::alert, [&given](Authorization answer) {
            EXPECT_FALSE(given) << "answered twice";
            given = std::move(answer);
        });
        EXPECT_FALSE(given) << "answered within the call";
        EXPECT_TRUE(comesTrue([&given] { return given.has_value(); }));
        return given.value_or(PlatformError{"no answer"});
    }
    bool allows(Limits limits = patient) {
        DesktopNotificationCenter asked = center(limits);
        return std::get<bool>(authorization(asked));
    }

    /// Empty when the notification was accepted.
    std::string deliver(UserNotificationCenter& center, NotificationRequest request) {
        std::optional<std::string> result;
        center.add(std::move(request), [&result](std::optional<PlatformError> error) {
            EXPECT_FALSE(result) << "answered twice";
            result = error.value_or(PlatformError{}).description;
        });
        clock.advance(1);
        EXPECT_FALSE(result) << "answered within the call";
        EXPECT_TRUE(comesTrue([&result] { return result.has_value(); }));
        return result.value_or("no answer");
    }
    static NotificationRequest request(std::optional<std::string> subtitle = std::nullopt) {
        return {"1", "Title & <b>", std::move(subtitle), "Body & <b>", 1s};
    }

    PrivateBus bus;
    ManualClock clock;
    QTemporaryDir folder;
    NotificationRecords records{identifier, {}, {folder.path()}, {}};
};

std::string errorIn(const Authorization& authorization) {
    const auto* error = std::get_if<PlatformError>(&authorization);
    return error == nullptr ? std::string() : error->description;
}

TEST_F(NotificationCenter, FailsInWordsWithoutAServiceOrABus) {
    DesktopNotificationCenter connected = center();
    EXPECT_THAT(errorIn(authorization(connected)), HasSubstr("no notification service"));
    EXPECT_THAT(deliver(connected, request()), HasSubstr("ServiceUnknown"));
    DesktopNotificationCenter lonely(QDBusConnection(u"none"_s), clock, u"Tidewell"_s, records,
                                     patient);
    EXPECT_THAT(errorIn(authorization(lonely)), HasSubstr("no message bus"));
    EXPECT_THAT(deliver(lonely, request()), HasSubstr("no message bus"));
}

TEST_F(NotificationCenter, AllowsWhereAServiceRunsOrCanBeStarted) {
    {
        const Daemon daemon(bus.connect(), {});
        EXPECT_TRUE(allows());
    }
    PrivateBus activating("org.freedesktop.Notifications");
    DesktopNotificationCenter asked(activating.connect(), clock, u"Tidewell"_s, records, patient);
    EXPECT_EQ(errorIn(authorization(asked)), "");
    EXPECT_THAT(deliver(asked, request()), HasSubstr("Spawn")) << "its program fails";
}

TEST_F(NotificationCenter, IsDeniedByThePortalsRecordOfThisProgramOnly) {
    using Permissions = QMap<QString, QStringList>;
    qDBusRegisterMetaType<Permissions>();
    const Daemon daemon(bus.connect(), {});
    std::optional<Permissions> permissions;
    bool hangs = false;
    const FakeService service(
        bus.connect(), u"org.freedesktop.impl.portal.PermissionStore"_s,
        u"/org/freedesktop/impl/portal/PermissionStore"_s,
        [&](const QDBusMessage& call, const QDBusConnection& connection) {
            EXPECT_EQ(call.member(), u"Lookup"_s);
            EXPECT_EQ(call.arguments(), QVariantList({u"notifications"_s, u"notification"_s}));
            if (permissions) {
                connection.send(call.createReply(QVariantList(
                    {QVariant::fromValue(*permissions), QVariant::fromValue(QDBusVariant(0))})));
            } else if (!hangs) {
                connection.send(
                    call.createErrorReply(u"org.freedesktop.portal.Error.NotFound"_s, QString()));
            }
        });
    EXPECT_TRUE(allows());
    const QStringList yes = {u"yes"_s};
    const QStringList no = {u"no"_s};
    permissions = Permissions{{u"org.other.Program"_s, no}, {identifier, yes}};
    EXPECT_TRUE(allows());
    (*permissions)[identifier] = no;
    EXPECT_FALSE(allows());
    permissions.reset();
    hangs = true;
    EXPECT_TRUE(allows(shortOfRecords));
}

TEST_F(NotificationCenter, IsDeniedByTheGnomeSettingOnGnomeOnly) {
    const Daemon daemon(bus.connect(), {});
    const QString tool = folder.path() + u"/gsettings"_s;
    const QString arguments = folder.path() + u"/arguments"_s;
    const auto allowedBy = [&](const QByteArray& script) {
        QFile::remove(tool); // the kernel refuses a script that is being written
        writeFile(tool, "#!/bin/sh\necho \"$*\" > " + arguments.toUtf8() + "\n" + script);
        QFile::setPermissions(tool, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return allows();
    };
    records.gsettings = tool;
    EXPECT_TRUE(allowedBy("echo false")) << "not on GNOME";
    EXPECT_FALSE(QFile::exists(arguments));
    records.desktops = {u"ubuntu"_s, u"GNOME"_s};
    EXPECT_FALSE(allowedBy("echo false"));
    QFile file(arguments);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "get org.gnome.desktop.notifications.application:/org/gnome/desktop/"
                              "notifications/application/net-tidewell-tidewell/ enable\n");
    EXPECT_TRUE(allowedBy("echo true"));
    EXPECT_TRUE(allowedBy("echo false; exit 1"));
    EXPECT_TRUE(allowedBy("echo false; kill -9 $$"));
    records.gsettings = folder.path() + u"/missing"_s;
    EXPECT_TRUE(allows());
    writeFile(tool, "#!/bin/sh\nexec sleep 1000");
    records.gsettings = tool;
    EXPECT_TRUE(allows(shortOfRecords));
}

TEST_F(NotificationCenter, IsDeniedByPlasmasSettingsOnPlasmaOnly) {
    const Daemon daemon(bus.connect(), {});
    QTemporaryDir system;
    records.configurationPaths << system.path();
    const auto file = u"/plasmanotifyrc"_s;
    const QByteArray off = "[Applications][net.tidewell.Tidewell]\nShowPopups = False\n";
    writeFile(system.path() + file, off);
    EXPECT_TRUE(allows()) << "not on Plasma";
    records.desktops = {u"KDE"_s};
    EXPECT_FALSE(allows());
    writeFile(folder.path() + file, "[Applications][net.tidewell.Tidewell]\nSeen=true\n"
                                    "[Applications][org.other]\nShowPopups=false\n");
    EXPECT_FALSE(allows()) << "the user's own file says nothing";
    writeFile(folder.path() + file, "[Applications][net.tidewell.Tidewell]\nShowPopups=true\n");
    EXPECT_TRUE(allows()) << "the user's own file goes first";
}

TEST_F(NotificationCenter, DeliversWithMarkupAndSoundAfterTheDelay) {
    const Daemon daemon(bus.connect(), {u"body"_s, u"body-markup"_s, u"sound"_s});
    DesktopNotificationCenter used = center();
    EXPECT_EQ(deliver(used, request("Sub & title")), "");
    EXPECT_EQ(deliver(used, request()), "");
    ASSERT_EQ(daemon.shown.size(), 2U) << "the same again is another notification";
    const QVariantList& first = daemon.shown[0];
    EXPECT_EQ(first.mid(0, 6),
              QVariantList({u"Tidewell"_s, 0U, identifier, u"Title & <b>"_s,
                            u"Sub &amp; title\nBody &amp; &lt;b&gt;"_s, QStringList()}));
    const auto hints = qdbus_cast<QVariantMap>(first.at(6));
    EXPECT_EQ(hints, QVariantMap({{u"desktop-entry"_s, identifier},
                                  {u"sound-name"_s, u"message-new-instant"_s},
                                  {u"urgency"_s, QVariant::fromValue(uchar{1})}}));
    EXPECT_EQ(first.at(7), QVariant(-1));
    EXPECT_EQ(daemon.shown[1].at(1), QVariant(0U));
    EXPECT_EQ(daemon.shown[1].at(4).toString(), u"Body &amp; &lt;b&gt;"_s);

    const int calls = daemon.calls;
    used.add(request(), [](const std::optional<PlatformError>&) {});
    clock.advance(0.999);
    QCoreApplication::processEvents();
    EXPECT_EQ(daemon.calls, calls);
    EXPECT_EQ(clock.pendingAlarms(), 1U);
}

TEST_F(NotificationCenter, SendsWhatTheDaemonOfTheMomentCanShow) {
    DesktopNotificationCenter used = center();
    {
        const Daemon daemon(bus.connect(), {u"body"_s});
        EXPECT_EQ(deliver(used, request("Sub")), "");
        ASSERT_EQ(daemon.shown.size(), 1U);
        EXPECT_EQ(daemon.shown[0].at(4), QVariant(u"Sub\nBody & <b>"_s));
        EXPECT_FALSE(qdbus_cast<QVariantMap>(daemon.shown[0].at(6)).contains(u"sound-name"_s));
    }
    const Daemon bare(bus.connect(), {});
    EXPECT_EQ(deliver(used, request("Sub")), "");
    ASSERT_EQ(bare.shown.size(), 1U);
    EXPECT_EQ(bare.shown[0].at(3), QVariant(u"Title & <b> – Sub – Body & <b>"_s));
    EXPECT_EQ(bare.shown[0].at(4), QVariant(QString()));
}

TEST_F(NotificationCenter, ReportsADaemonThatRefusesHangsOrDies) {
    Daemon daemon(bus.connect(), {});
    DesktopNotificationCenter used = center();
    daemon.refusal = u"org.freedesktop.Notifications.Error.ExcessNotificationGeneration"_s;
    EXPECT_EQ(deliver(used, request()),
              "org.freedesktop.Notifications.Error.ExcessNotificationGeneration: enough");
    DesktopNotificationCenter hurried = center({20s, 20s, 200ms});
    for (const char* method : {"GetCapabilities", "Notify"}) {
        daemon.silentAt = QString::fromLatin1(method);
        EXPECT_THAT(deliver(hurried, request()), HasSubstr("NoReply")) << method;
    }

    std::optional<PlatformError> failure;
    used.add(request(), [&failure](std::optional<PlatformError> error) { failure = error; });
    const int calls = daemon.calls;
    clock.advance(1);
    ASSERT_TRUE(comesTrue([&] { return daemon.calls == calls + 2; })) << "up to Notify";
    daemon.service.die();
    ASSERT_TRUE(comesTrue([&] { return failure.has_value(); }));
    EXPECT_THAT(failure->description, HasSubstr("disconnected"));
}

TEST_F(NotificationCenter, GivesUpOnABusThatHangs) {
    DesktopNotificationCenter used = center({60ms, 60ms, 60ms});
    bus.hang();
    EXPECT_THAT(errorIn(authorization(used)), HasSubstr("NoReply"));
    EXPECT_THAT(deliver(used, request()), HasSubstr("NoReply"));
}

TEST_F(NotificationCenter, DropsItsAnswersWhenItIsDestroyed) {
    Daemon daemon(bus.connect(), {});
    daemon.silentAt = u"GetCapabilities"_s;
    const auto witness = std::make_shared<int>();
    {
        DesktopNotificationCenter used = center();
        used.add(request(), [witness](const std::optional<PlatformError>&) { FAIL(); });
        clock.advance(1);
        used.add(request(), [witness](const std::optional<PlatformError>&) { FAIL(); });
        ASSERT_TRUE(comesTrue([&] { return daemon.calls == 1; }));
        used.requestAuthorization(AuthorizationOptions::alert,
                                  [witness](const Authorization&) { FAIL(); });
    }
    clock.advance(1); // the alarm finds nobody
    EXPECT_EQ(witness.use_count(), 1);
}

} // namespace
} // namespace tidewell
