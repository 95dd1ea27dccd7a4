#include "platform/linux/PowerOffMonitor.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/platform/linux/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <array>
#include <poll.h>
#include <unistd.h>

namespace tidewell {
namespace {

const QString objectPath = u"/org/freedesktop/login1"_s;

/// A login manager that gives out inhibitors and knows which are held.
class Login {
public:
    explicit Login(const QDBusConnection& bus)
        : service_(bus, u"org.freedesktop.login1"_s, objectPath,
                   [this](const QDBusMessage& call, const QDBusConnection& connection) {
                       inhibit(call, connection);
                   }) {}
    Login(const Login&) = delete;
    Login& operator=(const Login&) = delete;
    ~Login() {
        for (const int end : watched_) {
            close(end);
        }
    }

    /// How many inhibitors somebody still has the other end of.
    std::size_t held() const {
        return static_cast<std::size_t>(std::ranges::count_if(watched_, [](int end) {
            pollfd descriptor{end, 0, 0};
            return poll(&descriptor, 1, 0) == 0;
        }));
    }
    std::size_t given() const { return watched_.size(); }

    void announce(bool powerOff) { announceOn(service_.bus(), powerOff); }
    static void announceOn(QDBusConnection bus, bool powerOff) {
        bus.send(QDBusMessage::createSignal(objectPath, u"org.freedesktop.login1.Manager"_s,
                                            u"PrepareForShutdown"_s)
                 << powerOff);
    }

    bool refuses = false;

private:
    void inhibit(const QDBusMessage& call, const QDBusConnection& connection) {
        if (refuses) {
            connection.send(call.createErrorReply(QDBusError::AccessDenied, u"no"_s));
            return;
        }
        EXPECT_EQ(call.arguments(), QVariantList({u"shutdown"_s, u"Tidewell"_s,
                                                  u"Saving the history"_s, u"delay"_s}));
        std::array<int, 2> ends{};
        ASSERT_EQ(pipe(ends.data()), 0);
        QDBusUnixFileDescriptor given;
        given.giveFileDescriptor(ends[1]);
        watched_.push_back(ends[0]);
        connection.send(call.createReply(QVariant::fromValue(given)));
    }

    std::vector<int> watched_;
    FakeService service_;
};

class PowerOff : public testing::Test {
protected:
    PowerOffMonitor::Observer observer() {
        return {[this] { events.emplace_back(login && login->held() == 1 ? "off, held" : "off"); },
                [this] { events.emplace_back("called off"); }};
    }
    /// What is logged next, all of it.
    std::string nextLine() {
        std::vector<std::string> lines;
        EXPECT_TRUE(comesTrue([&] { return !(lines = log.takeLines()).empty(); }));
        return lines.size() == 1 ? lines[0] : "";
    }
    void expectHeld(std::size_t held, std::size_t given) {
        EXPECT_TRUE(comesTrue([&] { return login->held() == held && login->given() == given; }))
            << login->held() << " of " << login->given();
    }

    PrivateBus bus;
    RecordingLog log;
    std::vector<std::string> events;
    std::optional<Login> login;
};

TEST_F(PowerOff, HoldsTheMachineUpUntilTheWorkIsDoneAndAgainWhenItIsCalledOff) {
    login.emplace(bus.connect());
    {
        const PowerOffMonitor monitor(bus.connect(), u"Tidewell"_s, observer(), log);
        expectHeld(1, 1);
        login->announce(true);
        expectHeld(0, 1);
        EXPECT_THAT(events, testing::ElementsAre("off, held"));
        login->announce(false);
        expectHeld(1, 2);
        Login::announceOn(bus.connect(), true); // somebody else: must not count
        login->announce(true);
        login->announce(true);
        expectHeld(0, 2);
        EXPECT_THAT(events, testing::ElementsAre("off, held", "called off", "off, held"));
        login->announce(false);
        expectHeld(1, 3);
    }
    expectHeld(0, 3);
    EXPECT_TRUE(log.takeLines().empty());
}

TEST_F(PowerOff, FollowsTheLoginManagerThroughItsAbsenceAndRestarts) {
    const PowerOffMonitor monitor(bus.connect(), u"Tidewell"_s, observer(), log);
    EXPECT_THAT(nextLine(), testing::StartsWith("info general PowerOffMonitor(): No"));
    for (int run = 0; run < 2; ++run) {
        login.emplace(bus.connect());
        expectHeld(1, 1);
        login->announce(true);
        expectHeld(0, 1);
    }
    EXPECT_EQ(events.size(), 2U);
    EXPECT_TRUE(log.takeLines().empty());
}

TEST_F(PowerOff, HearsTheAnnouncementWithoutAnInhibitorToo) {
    login.emplace(bus.connect());
    login->refuses = true;
    const PowerOffMonitor monitor(bus.connect(), u"Tidewell"_s, observer(), log);
    EXPECT_THAT(nextLine(), testing::MatchesRegex("error general takeInhibitor.*AccessDenied.*"));
    login->announce(true);
    EXPECT_TRUE(comesTrue([&] { return events == std::vector<std::string>{"off"}; }));
}

TEST_F(PowerOff, DoesWithoutASystemBusAndDoesNotWaitForOneThatHangs) {
    const PowerOffMonitor lonely(QDBusConnection(u"none"_s), u"Tidewell"_s, observer(), log);
    EXPECT_THAT(nextLine(), testing::HasSubstr("no message bus"));
    const QDBusConnection connection = bus.connect();
    bus.hang();
    QElapsedTimer timer;
    timer.start();
    const PowerOffMonitor monitor(connection, u"Tidewell"_s, observer(), log);
    QCoreApplication::processEvents();
    EXPECT_LT(timer.elapsed(), 4000) << "a call that waits does so for 25 s";
}

} // namespace
} // namespace tidewell
