#include "processes/linux/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::ElementsAre;

TEST(CommandLine, IsSplitAsEntriesQuoteIt) {
    EXPECT_THAT(splitCommand(R"(  "/opt/my app/run" --a='b c' %U 100%% \"x %)"),
                ElementsAre("/opt/my app/run", "--a=b c", "100%", "\"x", "%"));
    EXPECT_THAT(splitCommand(R"(a "" "b \$ 'c)"), ElementsAre("a", "", "b $ 'c"));
}

TEST(CommandLine, OfAnEntryIsAboutTheProgramBehindItsWrappers) {
    using Case = std::pair<const char*, Program>;
    for (const auto& [command, program] : {
             Case{"firefox %u", {"firefox"}},
             {"env -i A=b /usr/bin/x --new", {"/usr/bin/x", false, true}},
             {"nice -n 10 nohup x", {"x"}},
             {"sh -c \"LANG=C exec x --y\"", {"x", false, true}},
             {"python3 -O /opt/a/main.py %F", {"/opt/a/main.py", true}},
             {"python3 -m thing", {"thing", true}},
             {"java -Xmx1g -jar /opt/a.jar", {"/opt/a.jar", true}},
             {"flatpak run --branch=stable org.a.B", {}},
             {"snap run spot", {"spot"}},
             {"env", {}},
         }) {
        EXPECT_EQ(programOfCommand(splitCommand(command)), program) << command;
    }
    const std::vector<std::string> shell{"/usr/bin/dash", "-c", "x; y"};
    EXPECT_EQ(programOfProcess(shell).name, "") << "the shell is what runs";
}

} // namespace
} // namespace tidewell
