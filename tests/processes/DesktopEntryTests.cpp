#include "processes/linux/DesktopEntries.h"
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
    const std::string text = "# a comment\n[Desktop Entry]\nType=Application\nName[de]=Datei\\sen\n"
                             "Name=Files\nName[de_AT]=\nIcon=files.png\n"
                             "Exec=\"/opt/my \\\\\"files\" %U\nNoDisplay=true\n"
                             "[Desktop Action new]\nName[de]=Neu\n";
    EXPECT_EQ(parseDesktopEntry(text, entryLanguages("de_AT.UTF-8"))->name, "Datei en");
    const auto entry = parseDesktopEntry(text, {});
    EXPECT_EQ(entry->name, "Files");
    EXPECT_EQ(entry->icon->icon(), "files");
    EXPECT_EQ(entry->program.name, "/opt/my \"files");
    EXPECT_FALSE(entry->isShown);

    EXPECT_FALSE(parseDesktopEntry("[Desktop Action a]\nName=x\n", {}));
    EXPECT_EQ(parseDesktopEntry("[Desktop Entry]\r\nName=a\xff\r\n", {})->name, "a\xef\xbf\xbd");
}

TEST(DesktopEntries, AreSoughtWhereTheEnvironmentSays) {
    const ScopedEnvironment environment({{"HOME", "/home/a"},
                                         {"XDG_DATA_HOME", "relative"},
                                         {"XDG_DATA_DIRS", "/x:relative::/y/"}});
    EXPECT_THAT(usualDataFolders(), ElementsAre("/home/a/.local/share", "/x", "/y/"));
}

} // namespace
} // namespace tidewell
