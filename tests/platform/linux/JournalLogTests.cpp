#include "platform/linux/JournalLog.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>

namespace tidewell {
namespace {

std::string readPipe(int descriptor) {
    std::string text(1U << 16U, '\0');
    text.resize(static_cast<std::size_t>(
        std::max<ssize_t>(::read(descriptor, text.data(), text.size()), 0)));
    return text;
}

TEST(JournalLog, WritesSafeLinesWhereThereIsNoJournalAndOutlivesTheirReader) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    JournalLog log("net.tidewell.Tidewell", LogLevel::info, {"/nowhere", pipe[1]});
    logMessage(log, "went well", "file", "a/b/Watcher.cpp", "readData()", 12, LogLevel::info);
    logMessage(log, "two\nlines\r\x1b[31m\tred, näïve\x7f" + std::string(1, '\0') + "end",
               "general", "", "f()", -1, LogLevel::error);
    EXPECT_EQ(readPipe(pipe[0]), "tidewell: info: file: Watcher.cpp.readData()[12]: went well\n"
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
