#include "platform/linux/JournalLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>
#include <thread>

namespace tidewell {
namespace {

/// A log whose lines can be read back.
class StreamLog final {
public:
    explicit StreamLog(LogLevel minimumLevel)
        : descriptor_(
              ::open((folder_.path() / "stderr").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600))
        , log_("net.tidewell.Tidewell", minimumLevel, {folder_.path() / "socket", descriptor_}) {}
    StreamLog(const StreamLog&) = delete;
    StreamLog& operator=(const StreamLog&) = delete;
    ~StreamLog() { ::close(descriptor_); }

    JournalLog& log() { return log_; }
    std::string text() const { return readText(folder_.path() / "stderr"); }

private:
    TemporaryFolder folder_;
    int descriptor_;
    JournalLog log_;
};

TEST(JournalLog, WritesALineForEachRecordWhereThereIsNoJournal) {
    StreamLog stream(LogLevel::info);
    logMessage(stream.log(), "went well", "file", "a/b/Watcher.cpp", "readData()", 12,
               LogLevel::info);
    logMessage(stream.log(), "two\nlines\r\x1b[31m\tred, näïve\x7f" + std::string(1, '\0') + "end",
               "general", "", "f()", -1, LogLevel::error);
    EXPECT_EQ(stream.text(), "tidewell: info: file: Watcher.cpp.readData()[12]: went well\n"
                             "tidewell: error: general: Unknown.f()[-1]: two\\nlines\\x0d\\x1b[31m"
                             "\\x09red, näïve\\x7f\\x00end\n");
}

TEST(JournalLog, WritesNothingBelowItsLevel) {
    StreamLog stream(LogLevel::error);
    EXPECT_FALSE(stream.log().isEnabled(LogLevel::info));
    logMessage(stream.log(), "unheard", "general", "F", "f()", 1, LogLevel::info);
    logMessage(stream.log(), "heard", "general", "F", "f()", 2, LogLevel::error);
    EXPECT_EQ(stream.text(), "tidewell: error: general: F.f()[2]: heard\n");
}

TEST(JournalLog, KeepsTheLinesOfThreadsApart) {
    StreamLog stream(LogLevel::info);
    const std::string message(1000, 'm');
    const auto logALot = [&] {
        for (int i = 0; i < 200; ++i) {
            logMessage(stream.log(), message, "general", "F", "f()", 1, LogLevel::info);
        }
    };
    std::thread other(logALot);
    logALot();
    other.join();
    std::string expected;
    for (int i = 0; i < 400; ++i) {
        expected += "tidewell: info: general: F.f()[1]: " + message + "\n";
    }
    EXPECT_EQ(stream.text(), expected);
}

TEST(JournalLog, OutlivesTheReaderOfItsLines) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ::close(pipe[0]);
    JournalLog log("s", LogLevel::info, {"/nowhere", pipe[1]});
    logMessage(log, "message", "general", "F", "f()", 1, LogLevel::info);
    ::close(pipe[1]);
    logMessage(log, "message", "general", "F", "f()", 1, LogLevel::info);
    sigset_t pending;
    ASSERT_EQ(sigpending(&pending), 0);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

/// The entry that a journal of our own receives, run in a process of its own, whose /run is
/// private. The first byte tells how it went: 's' for not allowed here, 'd' for a datagram.
void receiveAnEntry(int answer) {
    const auto give = [answer](const std::string& text) {
        ::_exit(::write(answer, text.data(), text.size()) < 0 ? 1 : 0);
    };
    const std::string user = "0 " + std::to_string(::geteuid()) + " 1";
    const std::string group = "0 " + std::to_string(::getegid()) + " 1";
    if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) {
        writeText("/proc/self/uid_map", user); // files need an owner that exists in there
        writeText("/proc/self/setgroups", "deny");
        writeText("/proc/self/gid_map", group);
    }
    std::error_code error;
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("tmpfs", "/run", "tmpfs", 0, nullptr) != 0 ||
        !std::filesystem::create_directories("/run/systemd/journal", error)) {
        give("s");
    }
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0);
    const sockaddr_un address{AF_UNIX, "/run/systemd/journal/socket"};
    if (::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        give("no socket");
    }
    JournalLog log("net.tidewell.Tidewell");
    logMessage(log, "two\nlines", "file", "a/Watcher.cpp", "readData()", 12, LogLevel::error);
    std::array<char, 4096> entry{};
    const auto length = ::recv(socket, entry.data(), entry.size(), 0);
    give("d" + std::string(entry.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))));
}

TEST(JournalLog, GivesTheJournalTheRecordInFields) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        receiveAnEntry(pipe[1]);
    }
    ::close(pipe[1]);
    std::array<char, 4096> buffer{};
    const auto length = ::read(pipe[0], buffer.data(), buffer.size());
    ::close(pipe[0]);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_GT(length, 0) << status;
    const std::string answer(buffer.data(), static_cast<std::size_t>(length));
    if (answer == "s") {
        GTEST_SKIP() << "no private mount namespace here";
    }
    // A field with a line break comes with its length in front, in eight bytes.
    const std::string message = "Watcher.cpp.readData()[12]: two\nlines";
    const std::string size = static_cast<char>(message.size()) + std::string(7, '\0');
    EXPECT_EQ(answer, "dMESSAGE\n" + size + message +
                          "\nPRIORITY=3\nCODE_FILE=Watcher.cpp\nCODE_FUNC=readData()\n"
                          "CODE_LINE=12\nSYSLOG_IDENTIFIER=tidewell\n"
                          "TIDEWELL_SUBSYSTEM=net.tidewell.Tidewell\nTIDEWELL_CATEGORY=file\n");
}

} // namespace
} // namespace tidewell
