#include "processes/linux/DesktopEntries.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DesktopEntry, IsReadWithTheNameOfTheUsersLanguage) {
    EXPECT_THAT(entryLanguages("sr_RS.UTF-8@latin"),
                ElementsAre("sr_RS@latin", "sr_RS", "sr@latin", "sr"));
    EXPECT_THAT(entryLanguages("C.UTF-8"), IsEmpty());
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

class DesktopEntriesTest : public testing::Test {
protected:
    void write(const std::string& file, const std::string& lines) {
        const auto path = folder.path() / file;
        create_directories(path.parent_path());
        writeText(path, "[Desktop Entry]\nType=Application\n" + lines);
    }
    std::string nameOf(const RunProgram& program) const {
        const auto* entry = entries.running(program);
        return entry == nullptr ? "" : entry->name.value_or("unnamed");
    }

    TemporaryFolder folder;
    RecordingLog log;
    DesktopEntries entries{
        {(folder.path() / "home/share").string(), (folder.path() / "usr").string()}, {}, log};
};

TEST_F(DesktopEntriesTest, FindsTheEntryThatAProgramBelongsTo) {
    write("usr/applications/a.desktop", "Name=Window\nExec=edit --window\n");
    write("usr/applications/b.desktop",
          "Name=Editor\nExec=/usr/bin/edit %F\nTryExec=/usr/bin/ed\n");
    write("usr/applications/c.desktop", "Name=Silent\nExec=edit\nNoDisplay=true\n");
    write("usr/applications/d.desktop", "Name=Script\nExec=python3 /opt/a/main.py\n");
    write("usr/applications/e.desktop", "Name=Class\nExec=start-it\nStartupWMClass=Its-Window\n");
    write("usr/applications/kde/f.desktop", "Name=Deep\nExec=deep\n");
    write("usr/applications/h.desktop", "Name=Gone\nExec=gone\n");
    write("home/share/applications/h.desktop", "Hidden=true\n");
    write("usr/applications/large.desktop",
          "Name=Large\nExec=large\n#" + std::string(1 << 20, ' '));
    std::filesystem::create_directory_symlink(folder.path() / "usr/applications",
                                              folder.path() / "usr/applications/loop");
    ::mkfifo((folder.path() / "usr/applications/pipe.desktop").c_str(), 0600);
    EXPECT_TRUE(entries.refresh());

    EXPECT_EQ(nameOf({"/usr/bin/edit", {"edit"}}), "Editor") << "shown and without arguments";
    EXPECT_EQ(nameOf({"/usr/bin/ed", {"ed"}}), "Editor");
    EXPECT_EQ(nameOf({"/opt/a/main.py", {"main.py"}}), "Script");
    EXPECT_EQ(nameOf({"/opt/b/main.py", {"main.py"}}), "") << "another script of that name";
    EXPECT_EQ(nameOf({"", {"other", "its-window"}}), "Class");
    EXPECT_EQ(nameOf({"", {"gone"}}), "");
    EXPECT_EQ(nameOf({"", {"large"}}), "");
    EXPECT_EQ(entries.withIdentifier("kde-f")->name, "Deep");
    EXPECT_EQ(entries.withIdentifier("loop-a"), nullptr);
}

TEST_F(DesktopEntriesTest, ReadsAgainOnlyAfterChangesThoseOfNewFoldersIncluded) {
    EXPECT_TRUE(entries.refresh());
    const auto changed = [this](const char* what, const std::string& expected) {
        EXPECT_TRUE(entries.refresh()) << what;
        EXPECT_EQ(nameOf({"", {"x"}}), expected) << what;
        EXPECT_FALSE(entries.refresh()) << what;
    };
    create_directories(folder.path() / "home/share");
    changed("a folder on the way", "");
    write("home/share/applications/sub/x.desktop", "Name=One\nExec=x\n");
    changed("an entry in a new folder", "One");
    const auto sub = folder.path() / "home/share/applications/sub";
    rename(sub / "x.desktop", sub / "x.desktop.bak");
    changed("another name", "");
    remove_all(folder.path() / "home");
    changed("no folder any more", "");
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

TEST(DesktopEntries, AreSoughtWhereTheEnvironmentSays) {
    const ScopedEnvironment environment({{"HOME", "/home/a"},
                                         {"XDG_DATA_HOME", "relative"},
                                         {"XDG_DATA_DIRS", "/x:relative::/y/"}});
    EXPECT_THAT(usualDataFolders(), ElementsAre("/home/a/.local/share", "/x", "/y/"));
}

} // namespace
} // namespace tidewell
