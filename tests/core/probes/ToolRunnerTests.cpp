#include "core/probes/darwin/ToolRunner.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tidewell {
namespace {

class ToolRunnerTest : public testing::Test {
protected:
    /// Runs a shell script, with real processes and pipes.
    ToolResult run(const std::string& script) {
        const auto path = folder.path() / "tool";
        writeText(path, "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return std::get<ToolResult>(ToolRunner(path).run());
    }

    TemporaryFolder folder;
};

TEST_F(ToolRunnerTest, GivesStatusAndBothOutputsAsTheyAre) {
    auto result = run("printf 'a\\000\\377\\n'; printf 'warning\\n' >&2; exit 0");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput, std::string("a\0\xff\n", 4));
    EXPECT_EQ(result.standardError, "warning\n");

    result = run("printf '\\303\\050' >&2; exit 255");
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.standardOutput, "");
    EXPECT_EQ(result.standardError, "\xc3(");

    EXPECT_EQ(run("kill -KILL $$").status, SIGKILL);
    EXPECT_EQ(run("echo $#$HOME").standardOutput, "0" + std::string(getenv("HOME")) + "\n");
}

TEST_F(ToolRunnerTest, TakesInMegabytesOnBothOutputsInAnyOrder) {
    constexpr std::size_t size = 4 * 1024 * 1024;
    const std::string print = "head -c 4194304 /dev/zero";
    for (const auto& script : {print + "; " + print + " >&2", print + " >&2; " + print,
                               print + " & " + print + " >&2; wait"}) {
        const auto result = run(script);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardOutput, std::string(size, '\0'));
        EXPECT_EQ(result.standardError, std::string(size, '\0'));
    }
}

TEST_F(ToolRunnerTest, WaitsForAToolThatClosedItsOutputs) {
    const auto result = run("echo said; exec >&- 2>&-; sleep 0.1; exit 3");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.standardOutput, "said\n");
}

TEST_F(ToolRunnerTest, DoesNotWaitForWhatTheToolLeavesBehind) {
    // The one left behind holds an output open until the reading end of the FIFO goes away.
    const auto fifo = folder.path() / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const int readEnd = open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const int writeEnd = open(fifo.c_str(), O_WRONLY | O_CLOEXEC);
    const auto result = run("cat " + fifo.string() + " & head -c 60000 /dev/zero; exit 4");
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.standardOutput.size(), 60000U);
    const auto chatty = run("(while echo chatter; do :; done) & echo x");
    EXPECT_EQ(chatty.status, 0);
    EXPECT_NE(chatty.standardOutput.find("x\n"), std::string::npos);
    close(writeEnd);
    close(readEnd);
}

TEST_F(ToolRunnerTest, SaysWhyAToolCannotBeStarted) {
    const auto failure = [](const std::filesystem::path& path) {
        return std::get<ToolFailure>(ToolRunner(path).run()).description;
    };
    EXPECT_EQ(failure(folder.path() / "missing"), "No such file or directory");
    EXPECT_EQ(failure(folder.path()), "Permission denied");
    writeText(folder.path() / "plain", "echo");
    EXPECT_EQ(failure(folder.path() / "plain"), "Permission denied");
}

TEST_F(ToolRunnerTest, LeavesNoDescriptorAndNoChildBehindAndLendsTheToolNoneOfItsOwn) {
    const auto descriptors = [] {
        const std::filesystem::directory_iterator open("/proc/self/fd");
        return std::distance(begin(open), end(open));
    };
    const auto before = descriptors();
    const auto result = run("for i in 1 2; do pipe=$(readlink /proc/$$/fd/$i);"
                            "ls -l /proc/$$/fd | grep -cF $pipe; done");
    EXPECT_EQ(result.standardOutput, "1\n1\n") << "more than one end of a pipe in the tool";
    EXPECT_EQ(ToolRunner(folder.path() / "missing").run().index(), 1U);
    EXPECT_EQ(descriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(ToolRunnerTest, WorksWhereTheStandardStreamsAreClosed) {
    // In a process of its own: what it finds out is its exit status.
    EXPECT_EXIT(
        {
            close(STDIN_FILENO);
            close(STDOUT_FILENO);
            close(STDERR_FILENO);
            const auto result = run("echo out; echo err >&2");
            _exit(result.standardOutput == "out\n" && result.standardError == "err\n" ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

} // namespace
} // namespace tidewell
