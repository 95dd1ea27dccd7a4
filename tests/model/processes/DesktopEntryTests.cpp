#include "model/processes/linux/CommandLine.h"
#include "model/processes/linux/DesktopEntries.h"
#include "tests/fakes/ScopedEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::ElementsAre;

TEST(DesktopEntry, IsReadWithTheNameOfTheUsersLanguage) {
    EXPECT_THAT(entryLanguages("sr_RS.UTF-8@latin"),
                ElementsAre("sr_RS@latin", "sr_RS", "sr@latin", "sr"));
    EXPECT_THAT(entryLanguages("C.UTF-8"), ElementsAre());
    const std::string text =
        "# a comment\n[Desktop Entry]\nType=Application\nIcon[de]=x\nName[de]=Datei\\sen\n"
        "Name=Files\nName[de_AT]=\nIcon=files.png\n"
        "Exec=\"/opt/my \\\\\"files\" %U\nNoDisplay=true\n"
        "[Desktop Action new]\nName[de]=Neu\n";
    EXPECT_EQ(parseDesktopEntry(text, entryLanguages("de_AT.UTF-8"))->name, "Datei en");
    const auto entry = parseDesktopEntry(text, {});
    EXPECT_EQ(entry->name, "Files");
    EXPECT_EQ(entry->icon->name(), "files");
    EXPECT_EQ(entry->program.name, "/opt/my \"files");
    EXPECT_FALSE(entry->isShown);

    EXPECT_FALSE(parseDesktopEntry("[Desktop Action a]\nName=x\n", {}));
    EXPECT_EQ(parseDesktopEntry("[Desktop Entry]\r\nName=a\xff\r\n", {})->name, "a\xef\xbf\xbd");
}

TEST(CommandLine, IsSplitAsEntriesQuoteIt) {
    EXPECT_THAT(splitCommand(R"(  "/opt/my app/run" --a='b c' %U 100%% \"x %)"),
                ElementsAre("/opt/my app/run", "--a=b c", "100%", "\"x", "%"));
    EXPECT_THAT(splitCommand("a\t\"\"\n\"b \\$ 'c"), ElementsAre("a", "", "b $ 'c"));
}

TEST(CommandLine, OfAnEntryIsAboutTheProgramBehindItsWrappers) {
    using Case = std::pair<const char*, Program>;
    for (const auto& [command, program] :
         {Case{"firefox %u", {"firefox"}},
          Case{"env -i A=b /usr/bin/x --new", {"/usr/bin/x", false, true}},
          Case{"nice -n 10 nohup x", {"x"}},
          Case{"sh -c \"LANG=C exec x --y\"", {"x", false, true}}, Case{"bash --norc -ec x", {"x"}},
          Case{"python3 -O /opt/a/main.py %F", {"/opt/a/main.py", true}},
          Case{"python3 -m thing", {"thing", true}},
          Case{"java -Xmx1g -jar /opt/a.jar", {"/opt/a.jar", true}},
          Case{"flatpak run --branch=stable org.a.B", {}}, Case{"snap run spot", {"spot"}},
          Case{"env", {}}}) {
        EXPECT_EQ(programOfCommand(splitCommand(command)), program) << command;
    }
    for (const auto& [command, name, isWrapper] :
         {std::tuple{"/bin/dash -c x;y", "", true}, std::tuple{"/bin/bash", "/bin/bash", false},
          std::tuple{"/bin/bwrap maps", "/bin/bwrap", true},
          std::tuple{"/bin/env x", "/bin/env", true}, std::tuple{"/bin/python3 -c x", "", false}}) {
        const Program program = programOfProcess(splitCommand(command));
        EXPECT_EQ(program.name, name) << command;
        EXPECT_EQ(program.isWrapper, isWrapper) << command;
    }
}

TEST(DesktopEntries, AreSoughtWhereTheEnvironmentSays) {
    const ScopedEnvironment environment({{"HOME", "/home/a"},
                                         {"XDG_DATA_HOME", "relative"},
                                         {"XDG_DATA_DIRS", "/x:relative::/y/"}});
    EXPECT_THAT(usualDataFolders(), ElementsAre("/home/a/.local/share", "/x", "/y/"));
    const ScopedEnvironment none({{"XDG_DATA_HOME", "/home/b"}, {"XDG_DATA_DIRS", ""}});
    EXPECT_THAT(usualDataFolders(), ElementsAre("/home/b", "/usr/local/share", "/usr/share"));
}

} // namespace
} // namespace tidewell
