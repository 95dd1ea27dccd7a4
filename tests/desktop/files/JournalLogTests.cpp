#include "desktop/files/JournalLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>

namespace tidewell {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

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
}

/// Logs more than is taken while nobody reads, reads it at the descriptor, which does not block,
/// and gives what one more record brings.
std::vector<std::string> entriesAfterAFlood(JournalLog& log, int descriptor) {
    const auto receive = [descriptor] {
        std::vector<char> text(1U << 20U);
        const auto count = ::read(descriptor, text.data(), text.size());
        return std::string(text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    };
    constexpr unsigned flood = 3000;
    for (unsigned i = 0; i < flood; ++i) {
        logMessage(log, "flood", "general", "F", "f()", 1, LogLevel::info);
    }
    unsigned taken = 0;
    for (std::string text; !(text = receive()).empty();) {
        for (std::size_t at = 0; (at = text.find("flood", at)) != std::string::npos; ++at) {
            ++taken;
        }
    }
    EXPECT_TRUE(0 < taken && taken < flood) << taken;
    logMessage(log, "after\nthe flood", "general", "F", "f()", 1, LogLevel::info);
    std::vector<std::string> entries;
    for (std::string text; !(text = receive()).empty();) {
        entries.push_back(text);
    }
    EXPECT_THAT(entries.front(), HasSubstr("that were dropped: " + std::to_string(flood - taken)));
    return entries;
}

TEST(JournalLog, NeverWaitsForAJournalOrAReaderThatDoesNotReadAndSaysHowManyWereDropped) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "socket";
    sockaddr_un address{AF_UNIX, {}};
    file.native().copy(address.sun_path, sizeof address.sun_path - 1);
    const FileDescriptor journal(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0));
    ASSERT_EQ(::bind(journal.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    JournalLog log("net.tidewell.Tidewell", LogLevel::info, {file, -1});
    const auto entries = entriesAfterAFlood(log, journal.get());
    ASSERT_EQ(entries.size(), 2U);
    using namespace std::string_literals;
    EXPECT_THAT(entries.back(),
                StartsWith("MESSAGE\n\x19\0\0\0\0\0\0\0F.f()[1]: after\nthe flood\n"s +
                           "PRIORITY\n\x01\0\0\0\0\0\0\0"s + "6\nCODE_FILE\n"));

    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
    const FileDescriptor reader(pipe[0]);
    const FileDescriptor standardError(pipe[1]);
    ::fcntl(reader.get(), F_SETFL, O_NONBLOCK);
    JournalLog toError("net.tidewell.Tidewell", LogLevel::info, {"/nowhere", standardError.get()});
    EXPECT_THAT(entriesAfterAFlood(toError, reader.get()).front(),
                HasSubstr("after\\nthe flood\n"));
}

} // namespace
} // namespace tidewell
