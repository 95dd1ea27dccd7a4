#include "desktop/files/RunningProgram.h"
#include "desktop/session/PortalLoginItem.h"
#include "desktop/session/Sandbox.h"
#include "desktop/statusitem/StatusNotifierStatusItem.h"
#include "tests/desktop/PrivateBus.h"
#include "tests/fakes/ScopedEnvironment.h"

#include <QDBusArgument>
#include <QDBusVariant>

namespace tidewell {
namespace {

/// The bus as it is seen through the proxy that Flatpak puts before it.
class SandboxedBus : public BusTest {
protected:
    SandboxedBus() {
        const std::string socket = folder_.path() / "bus";
        startChild(proxy_, u"xdg-dbus-proxy"_s,
                   {bus.address(), QString::fromStdString(socket), u"--filter"_s,
                    u"--talk=org.kde.StatusNotifierWatcher"_s,
                    u"--talk=org.freedesktop.portal.*"_s});
        // The socket is there a moment before anybody listens at it.
        EXPECT_TRUE(comesTrue([this, address = u"unix:path="_s + QString::fromStdString(socket)] {
            QDBusConnection::disconnectFromBus(u"inside"_s);
            inside = QDBusConnection::connectToBus(address, u"inside"_s);
            return inside.isConnected();
        }));
    }
    ~SandboxedBus() override {
        QDBusConnection::disconnectFromBus(u"inside"_s);
        proxy_.kill();
        proxy_.waitForFinished();
    }

    QDBusConnection inside = noBus;

private:
    TemporaryFolder folder_;
    QProcess proxy_;
};

TEST_F(SandboxedBus, RegistersTheItemByItsUniqueNameWhereItMayHaveNoOther) {
    QString registered;
    const FakeService watcher(
        bus.connect(), u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
        [&registered](const QDBusMessage& call, const QDBusConnection& connection) {
            if (call.member() == u"RegisterStatusNotifierItem"_s) {
                registered = call.arguments().value(0).toString();
                connection.send(call.createReply());
            } else {
                connection.send(call.createReply(QVariant::fromValue(QDBusVariant(true))));
            }
        });
    LocalSettings local{{}};
    DesktopAppearance appearance{noBus, {}, local};
    StatusItemPlace place{{}};
    StatusNotifierHost host{inside, log};
    const StatusItemBehaviour behaviour{"tidewell", "Tidewell", [] {}, {}};
    StatusNotifierStatusItem item{inside, host, appearance, place, behaviour};
    item.setContent({.symbolName = "circle.fill", .text = "1 MB of 8 GB", .description = {}});
    ASSERT_TRUE(comesTrue([&registered] { return !registered.isEmpty(); }));
    auto question = QDBusMessage::createMethodCall(
        registered, QString::fromLatin1(StatusNotifierStatusItem::path),
        u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << u"org.kde.StatusNotifierItem"_s << u"Id"_s;
    const auto answer = answerTo(question, watcher.bus()).arguments().value(0);
    EXPECT_EQ(answer.value<QDBusVariant>().variant(), u"tidewell"_s);
}

TEST_F(SandboxedBus, AsksThePortalForTheStartAtLogin) {
    QList<QVariantMap> requests;
    const FakeService portal(
        bus.connect(), u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
        [&requests](const QDBusMessage& call, const QDBusConnection&) {
            if (call.interface() == u"org.freedesktop.portal.Background"_s &&
                call.member() == u"RequestBackground"_s && call.signature() == u"sa{sv}"_s) {
                requests << qdbus_cast<QVariantMap>(call.arguments().value(1));
            }
        });
    PortalLoginItem item(inside, {u"tidewell"_s});
    EXPECT_TRUE(item.registerApplication());
    EXPECT_TRUE(item.unregisterApplication());
    ASSERT_TRUE(comesTrue([&requests] { return requests.size() == 2; }));
    for (const bool starts : {true, false}) {
        const QVariantMap request = requests.takeFirst();
        EXPECT_EQ(request[u"autostart"_s], starts);
        EXPECT_EQ(request[u"commandline"_s].toStringList(), QStringList{u"tidewell"_s});
    }
}

TEST(Sandbox, IsKnownByItsMarksAndHidesProcessesUnlessASnapMayReadThem) {
    const TemporaryFolder plain;
    const TemporaryFolder flatpak;
    flatpak.write(".flatpak-info", "");
    const TemporaryFolder readable;
    readable.write("proc/1/stat", "1 (init)");
    using Text = std::optional<std::string>;
    const Text ours = runningProgram().parent_path();
    for (const auto& [root, snap, isThere, hides] :
         {std::tuple{&plain, Text(), false, false}, std::tuple{&flatpak, Text(), true, true},
          std::tuple{&plain, ours, true, true}, std::tuple{&readable, ours, true, false},
          std::tuple{&plain, Text("/usr/share"), false, false}}) { // of what started the program
        const ScopedEnvironment environment({{"SNAP", snap}});
        const Sandbox sandbox(root->path());
        EXPECT_EQ(sandbox.isThere(), isThere);
        EXPECT_EQ(sandbox.hidesProcesses(), hides);
    }
}

} // namespace
} // namespace tidewell
