#include "model/memory/probes/darwin/ToolRunner.h"
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
        const auto path = folder.write("tool", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return ToolRunner(path).run().value();
    }

    TemporaryFolder folder;
};

TEST_F(ToolRunnerTest, GivesStatusAndBothOutputsAsTheyAre) {
    const auto result = run("printf 'a\\000\\377\\n'; echo warning >&2; exit 255");
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.standardOutput, std::string("a\0\xff\n", 4));
    EXPECT_EQ(result.standardError, "warning\n");
    EXPECT_EQ(run("kill -KILL $$").status, SIGKILL);
    EXPECT_EQ(run("exec >&- 2>&-; sleep 0.1; exit 3").status, 3);
    // What the tool leaves behind goes on writing until the runner's end is closed.
    EXPECT_EQ(run("(while echo chatter; do :; done) & exit 4").status, 4);
}

TEST_F(ToolRunnerTest, TakesInMegabytesOnBothOutputsInAnyOrder) {
    const std::string all(4194304, '\0');
    const std::string print = "head -c 4194304 /dev/zero";
    for (const auto& script : {print + "; " + print + " >&2", print + " >&2; " + print}) {
        const auto result = run(script);
        EXPECT_TRUE(result.standardOutput == all && result.standardError == all) << script;
    }
}

TEST_F(ToolRunnerTest, SaysWhyAToolCannotBeStartedAndLeavesNoDescriptorAndNoChildBehind) {
    const auto descriptors = [] {
        const std::filesystem::directory_iterator open("/proc/self/fd");
        return std::distance(begin(open), end(open));
    };
    const auto before = descriptors();
    const auto result = ToolRunner(folder.path() / "missing").run();
    EXPECT_EQ(result.error().description(), "No such file or directory");
    EXPECT_EQ(descriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

} // namespace
} // namespace tidewell
