#include "platform/linux/JournalLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <thread>

namespace tidewell {
namespace {

/// Its reading end, up to `most` bytes of what comes first.
std::string readPipe(int descriptor, std::size_t most = 1U << 16U) {
    std::string text(most, '\0');
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
    JournalLog quiet("net.tidewell.Tidewell", LogLevel::error, {"/nowhere", pipe[1]});
    logMessage(quiet, "unheard", "general", "F", "f()", 1, LogLevel::info);

    const auto logSome = [&log] {
        for (int i = 0; i < 50; ++i) {
            logMessage(log, std::string(100, 'm'), "general", "F", "f()", 1, LogLevel::info);
        }
    };
    std::thread other(logSome);
    logSome();
    other.join();
    std::string expected;
    for (int i = 0; i < 100; ++i) {
        expected += "tidewell: info: general: F.f()[1]: " + std::string(100, 'm') + "\n";
    }
    EXPECT_EQ(readPipe(pipe[0]), expected) << "the lines of threads stay apart";
    ::close(pipe[0]);
    logSome();
    ::close(pipe[1]);
    sigset_t pending;
    ASSERT_EQ(sigpending(&pending), 0);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

/// What a journal of our own receives; in a process of its own, as it needs a private /run. Empty
/// where that is not allowed.
std::string receivedEntry() {
    const std::string user = "0 " + std::to_string(::geteuid()) + " 1";
    if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) {
        writeText("/proc/self/uid_map", user); // files need an owner that exists in there
    }
    std::error_code error;
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("tmpfs", "/run", "tmpfs", 0, nullptr) != 0 ||
        !std::filesystem::create_directories("/run/systemd/journal", error)) {
        return {};
    }
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0);
    const sockaddr_un address{AF_UNIX, "/run/systemd/journal/socket"};
    if (::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return "no socket";
    }
    JournalLog log("net.tidewell.Tidewell");
    logMessage(log, "two\nlines", "file", "a/Watcher.cpp", "readData()", 12, LogLevel::error);
    return "received " + readPipe(socket);
}

TEST(JournalLog, GivesTheJournalTheRecordInFields) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const std::string entry = receivedEntry();
        ::_exit(::write(pipe[1], entry.data(), entry.size()) < 0 ? 1 : 0);
    }
    ::close(pipe[1]);
    const std::string entry = readPipe(pipe[0]);
    ::close(pipe[0]);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    if (entry.empty()) {
        GTEST_SKIP() << "no private mount namespace here";
    }
    // A field with a line break comes with its length in front, in eight bytes.
    const std::string message = "Watcher.cpp.readData()[12]: two\nlines";
    const std::string size = static_cast<char>(message.size()) + std::string(7, '\0');
    EXPECT_EQ(entry, "received MESSAGE\n" + size + message +
                         "\nPRIORITY=3\nCODE_FILE=Watcher.cpp\nCODE_FUNC=readData()\n"
                         "CODE_LINE=12\nSYSLOG_IDENTIFIER=tidewell\n"
                         "TIDEWELL_SUBSYSTEM=net.tidewell.Tidewell\nTIDEWELL_CATEGORY=file\n");
}

} // namespace
} // namespace tidewell
