#include "core/probes/darwin/ToolRunner.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
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
    const auto check = [this](const std::string& script, int status, const std::string& output) {
        const auto result = run(script);
        EXPECT_EQ(result.status, status) << script;
        EXPECT_EQ(result.standardOutput, output) << script;
    };
    check("printf 'a\\000\\377\\n'", 0, std::string("a\0\xff\n", 4));
    check("exit 255", 255, "");
    check("kill -KILL $$", SIGKILL, "");
    check("echo said; exec >&- 2>&-; sleep 0.1; exit 3", 3, "said\n");
    EXPECT_EQ(run("echo warning >&2").standardError, "warning\n");
}

TEST_F(ToolRunnerTest, TakesInMegabytesOnBothOutputsInAnyOrder) {
    constexpr std::size_t size = 4 * 1024 * 1024;
    const std::string print = "head -c 4194304 /dev/zero";
    for (const auto& script : {print + "; " + print + " >&2", print + " >&2; " + print}) {
        const auto result = run(script);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardOutput, std::string(size, '\0'));
        EXPECT_EQ(result.standardError, std::string(size, '\0'));
    }
}

TEST_F(ToolRunnerTest, DoesNotWaitForWhatTheToolLeavesBehind) {
    // It goes on writing until the runner's end is closed.
    const auto chatty = run("(while echo chatter; do :; done) & echo x");
    EXPECT_EQ(chatty.status, 0);
    EXPECT_NE(chatty.standardOutput.find("x\n"), std::string::npos);
}

TEST_F(ToolRunnerTest, SaysWhyAToolCannotBeStartedAndLeavesNoDescriptorAndNoChildBehind) {
    const auto descriptors = [] {
        const std::filesystem::directory_iterator open("/proc/self/fd");
        return std::distance(begin(open), end(open));
    };
    const auto before = descriptors();
    const auto failure = ToolRunner(folder.path() / "missing").run();
    EXPECT_EQ(std::get<ToolFailure>(failure).description, "No such file or directory");
    const auto result = run("for i in 1 2; do pipe=$(readlink /proc/$$/fd/$i);"
                            "ls -l /proc/$$/fd | grep -cF $pipe; done");
    EXPECT_EQ(result.standardOutput, "1\n1\n") << "more than one end of a pipe in the tool";
    EXPECT_EQ(descriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

} // namespace
} // namespace tidewell
