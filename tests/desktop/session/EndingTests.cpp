#include "desktop/session/ProgramEnd.h"
#include "desktop/session/TerminationSignals.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <csignal>

namespace tidewell {
namespace {

TEST(TerminationSignals, AskOnceForTheEndAndLeaveAnIgnoredHangUpIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    int asked = 0;
    {
        const TerminationSignals signals([&asked] { ++asked; });
        for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
            raise(signal);
            QCoreApplication::processEvents();
            EXPECT_EQ(asked, signal == SIGHUP ? 0 : 1) << signal;
        }
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
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
