#include "desktop/session/ProgramEnd.h"
#include "desktop/session/TerminationSignals.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <latch>

namespace tidewell {
namespace {

using namespace std::chrono_literals;

TEST(TerminationSignals, AskOnceForTheEndAndLeaveAnIgnoredHangUpIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    int asked = 0;
    {
        const TerminationSignals signals([&asked] { ++asked; }, {1h, [] { FAIL(); }});
        for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
            raise(signal);
            QCoreApplication::processEvents();
            EXPECT_EQ(asked, signal == SIGHUP ? 0 : 1) << signal;
        }
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(TerminationSignals, AreHeardOnAnotherThreadWhileTheEventLoopIsBlocked) {
    std::latch called(2);
    const TerminationSignals signals([] {}, {1ms, [&called] {
                                                 if (!called.try_wait()) {
                                                     called.count_down();
                                                 }
                                             }});
    raise(SIGTERM);
    called.wait();
}

[[noreturn]] void exitWithoutTheEventLoop() {
    const ProgramEnd programEnd([] { std::fputs("saved;", stderr); });
    std::exit(7);
}

TEST(ProgramEndDeathTest, ComesWhereTheProgramExitsWithoutItsEventLoopsEnd) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(exitWithoutTheEventLoop(), testing::ExitedWithCode(7), "saved;");
}

} // namespace
} // namespace tidewell
