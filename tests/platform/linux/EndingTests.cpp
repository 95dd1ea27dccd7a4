#include "platform/linux/HangingBuses.h"
#include "platform/linux/SessionEnd.h"
#include "platform/linux/TerminationSignals.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/platform/linux/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QGuiApplication>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tidewell {
namespace {

volatile std::sig_atomic_t handledBefore = 0;

TEST(TerminationSignals, AskOnceForTheEndAndKillNobodyMeanwhile) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        std::signal(signal, [](int) { handledBefore = handledBefore + 1; });
        int asked = 0;
        {
            const TerminationSignals signals([&asked] { ++asked; });
            raise(signal);
            EXPECT_EQ(asked, 0) << "within the handler";
            ASSERT_TRUE(comesTrue([&asked] { return asked == 1; }));
            raise(signal);
            raise(SIGTERM);
            QCoreApplication::processEvents();
            EXPECT_EQ(asked, 1);
        }
        EXPECT_EQ(handledBefore, 0);
        raise(signal);
        EXPECT_EQ(handledBefore, 1);
        handledBefore = 0;
        std::signal(signal, SIG_DFL);
    }
}

TEST(TerminationSignals, LeaveAnIgnoredHangUpIgnoredAndSurviveClosedPipes) {
    std::signal(SIGHUP, SIG_IGN);
    int asked = 0;
    {
        const TerminationSignals signals([&asked] { ++asked; });
        raise(SIGHUP);
        QCoreApplication::processEvents();
        EXPECT_EQ(asked, 0);
        std::array<int, 2> ends{};
        ASSERT_EQ(pipe(ends.data()), 0);
        close(ends[0]);
        EXPECT_EQ(write(ends[1], "x", 1), -1);
        EXPECT_EQ(errno, EPIPE);
        close(ends[1]);
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

[[noreturn]] void endProgram(bool throughTheEventLoop) {
    const SessionEnd sessionEnd([] { std::fputs("saved;", stderr); });
    if (throughTheEventLoop) {
        QMetaObject::invokeMethod(qGuiApp, &QCoreApplication::quit, Qt::QueuedConnection);
        QCoreApplication::exec();
    }
    std::exit(7);
}

TEST(SessionEndDeathTest, CallsOnceAtTheEventLoopsEndOrAtExit) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto once = testing::AllOf(testing::HasSubstr("saved;"),
                                     testing::Not(testing::HasSubstr("saved;saved;")));
    EXPECT_EXIT(endProgram(true), testing::ExitedWithCode(7), once);
    EXPECT_EXIT(endProgram(false), testing::ExitedWithCode(7), once);
}

/// An environment variable, as long as this lives.
class Variable {
public:
    Variable(const char* name, const QByteArray& value)
        : name_(name)
        , before_(qgetenv(name)) {
        qputenv(name_, value);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { before_.isNull() ? qunsetenv(name_) : qputenv(name_, before_); }

private:
    const char* name_;
    QByteArray before_;
};

TEST(HangingBuses, AreLeftOutAndOthersAreNot) {
    QTemporaryDir folder;
    const QByteArray path = folder.path().toUtf8() + "/bus";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
    const int listening = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(listen(listening, 1), 0); // and never accepts

    const PrivateBus bus;
    RecordingLog log;
    {
        const Variable session("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
        const Variable system("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        leaveOutHangingBuses(std::chrono::seconds(20), log);
        EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS"), bus.address().toUtf8());
        EXPECT_EQ(qgetenv("DBUS_SYSTEM_BUS_ADDRESS"), "unix:path=/nonexistent");
        EXPECT_TRUE(log.takeLines().empty());
    }
    // The second and the third find the socket's queue full.
    for (int round = 0; round < 3; ++round) {
        const Variable session("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);
        const Variable system("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path);
        leaveOutHangingBuses(std::chrono::milliseconds(50), log);
        EXPECT_THAT(log.takeLines(),
                    testing::ElementsAre(testing::HasSubstr("error general leaveOutHangingBuses"
                                                            "(patience:): The session bus"),
                                         testing::HasSubstr("The system bus does not answer")));
        EXPECT_FALSE(
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"left out %1"_s.arg(round))
                .isConnected());
    }
    close(listening);
}

} // namespace
} // namespace tidewell
