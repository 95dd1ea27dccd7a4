#include "desktop/files/JournalLog.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>

namespace tidewell {
namespace {

TEST(JournalLog, WritesSafeLinesWhereThereIsNoJournalAndOutlivesTheirReader) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    JournalLog log("net.tidewell.Tidewell", LogLevel::info, {"/nowhere", pipe[1]});
    logMessage(log, "went well", "file", "a/b/Watcher.cpp", "readData()", 12, LogLevel::info);
    logMessage(log, "two\nlines\r\x1b[31m\tred, näïve\x7f" + std::string(1, '\0') + "end",
               "general", "", "f()", -1, LogLevel::error);
    std::array<char, 1000> text{};
    EXPECT_GT(::read(pipe[0], text.data(), text.size() - 1), 0);
    EXPECT_STREQ(text.data(), "tidewell: info: file: Watcher.cpp.readData()[12]: went well\n"
                              "tidewell: error: general: Unknown.f()[-1]: two\\nlines\\x0d"
                              "\\x1b[31m\\x09red, näïve\\x7f\\x00end\n");
    ::close(pipe[0]);
    logMessage(log, "unheard", "general", "F", "f()", 1, LogLevel::info);
    ::close(pipe[1]);
    sigset_t pending;
    ASSERT_EQ(sigpending(&pending), 0);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

} // namespace
} // namespace tidewell
