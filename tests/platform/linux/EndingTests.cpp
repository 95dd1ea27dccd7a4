#include "platform/linux/HangingBuses.h"
#include "platform/linux/PowerOffMonitor.h"
#include "platform/linux/SessionEnd.h"
#include "platform/linux/TerminationSignals.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/platform/linux/PrivateBus.h"

#include <QDBusConnectionInterface>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(TerminationSignals, AskOnceForTheEndAndLeaveAnIgnoredHangUpIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    {
        int asked = 0;
        const TerminationSignals signals([&asked] { ++asked; });
        raise(SIGHUP);
        QCoreApplication::processEvents();
        raise(SIGINT);
        EXPECT_EQ(asked, 0) << "within the handler";
        ASSERT_TRUE(comesTrue([&asked] { return asked == 1; }));
        raise(SIGTERM);
        QCoreApplication::processEvents();
        EXPECT_EQ(asked, 1);
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

[[noreturn]] void endProgram(bool throughTheEventLoop) {
    const SessionEnd sessionEnd([] { std::fputs("saved;", stderr); });
    if (throughTheEventLoop) {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        QCoreApplication::exec();
    }
    std::exit(7);
}

TEST(SessionEndDeathTest, CallsOnceAtTheEventLoopsEndOrAtExit) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto once = testing::AllOf(HasSubstr("saved;"), testing::Not(HasSubstr("saved;saved;")));
    EXPECT_EXIT(endProgram(true), testing::ExitedWithCode(7), once);
    EXPECT_EXIT(endProgram(false), testing::ExitedWithCode(7), once);
}

TEST(HangingBuses, AreLeftOutAndOthersAreNot) {
    const TemporaryFolder folder;
    const std::string path = folder.path() / "bus";
    sockaddr_un address{AF_UNIX, {}};
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int listening = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(listen(listening, 1), 0); // and never accepts

    const PrivateBus bus;
    RecordingLog log;
    const auto after = [&log](const std::string& session, const std::string& system,
                              std::chrono::milliseconds patience) {
        const ScopedEnvironment environment(ScopedEnvironment::Variables{
            {"DBUS_SESSION_BUS_ADDRESS", session}, {"DBUS_SYSTEM_BUS_ADDRESS", system}});
        leaveOutHangingBuses(patience, log);
        return std::string(std::getenv("DBUS_SESSION_BUS_ADDRESS")) + " " +
               std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    };
    const std::string usable = bus.address().toStdString();
    EXPECT_EQ(after(usable, "unix:path=/none", std::chrono::seconds(20)),
              usable + " unix:path=/none");
    const std::string hanging = "unix:path=" + path;
    // The second and the third find the socket's queue full.
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(after(hanging, hanging, std::chrono::milliseconds(50)), "disabled: disabled:");
        EXPECT_THAT(log.takeLines(), ElementsAre(HasSubstr("The session bus does not answer"),
                                                 HasSubstr("The system bus does not answer")));
    }
    close(listening);
}

class PowerOff : public BusTest {};

TEST_F(PowerOff, IsHeardFromTheLoginManagerOnlyWhateverBecomesOfThat) {
    const auto expectLogged = [this](const char* text) {
        std::vector<std::string> lines;
        EXPECT_TRUE(comesTrue([&] { return !(lines = log.takeLines()).empty(); }));
        EXPECT_THAT(lines, ElementsAre(HasSubstr(text)));
    };
    const auto announce = [](const QDBusConnection& sender, bool powerOff) {
        auto signal = QDBusMessage::createSignal(u"/org/freedesktop/login1"_s,
                                                 u"org.freedesktop.login1.Manager"_s,
                                                 u"PrepareForShutdown"_s);
        sender.send(signal << powerOff);
    };
    std::vector<std::string> events;
    const PowerOffMonitor::Observer observer{[&events] { events.emplace_back("off"); },
                                             [&events] { events.emplace_back("called off"); }};
    const PowerOffMonitor monitor(bus.connect(), u"Tidewell"_s, observer, log);
    expectLogged("info general PowerOffMonitor(): No");
    std::optional<FakeService> login;
    for (int run = 0; run < 2; ++run) { // it is restarted
        login.emplace(bus.connect(), u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
                      [](const QDBusMessage& call, const QDBusConnection& connection) {
                          connection.send(call.createErrorReply(QDBusError::AccessDenied, {}));
                      });
        expectLogged("AccessDenied"); // no inhibitor
        const QDBusConnection stranger = bus.connect();
        announce(stranger, true);
        stranger.interface()->isServiceRegistered(u"x"_s); // the bus has it by now
        for (const bool powerOff : {true, true, false}) {
            announce(login->bus(), powerOff);
        }
        expectLogged("AccessDenied"); // asked anew when it was called off
        EXPECT_THAT(std::exchange(events, {}), ElementsAre("off", "called off"));
    }
}

} // namespace
} // namespace tidewell
