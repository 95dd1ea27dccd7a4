#include "model/processes/linux/LinuxApplicationSource.h"
#include "tests/fakes/Surroundings.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace tidewell {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

Task<void> storeList(LinuxApplicationSource* source, ApplicationList* list) {
    *list = co_await source->runningApplications();
}

class LinuxApplicationSourceTest : public Surroundings {
protected:
    struct Process {
        std::string name;
        int id;
        std::string stat = "S 1 0 0 0 0 0"; ///< from the state and the parent to the flags
        std::string command = "/bin/true";  ///< its words, a bar between each two
        std::string unit = "session-2.scope";
        int user = 1000;
        int startTime = 100;
    };

    void run(const Process& process) {
        const auto id = std::to_string(process.id);
        const std::filesystem::path path = "proc/" + id;
        folder.write(path / "stat", id + " (" + process.name + ") " + process.stat +
                                        " 0 0 0 0 0 0 0 0 0 0 0 0 " +
                                        std::to_string(process.startTime) + " 0 0\n");
        folder.write(path / "status", "Uid:\t0\t" + std::to_string(process.user) + "\t0\t0\n");
        folder.write(path / "statm", "9 3 0 0 0 0 0\n");
        folder.write(path / "cgroup", "0::/user.slice/" + process.unit + "\n");
        std::string commandLine = process.command;
        std::ranges::replace(commandLine, '|', '\0');
        folder.write(path / "cmdline", commandLine);
        std::filesystem::remove(folder.path() / path / "exe");
        std::filesystem::create_symlink(commandLine.c_str(), folder.path() / path / "exe");
    }

    /// Out of the way, so that its file number is not given to another.
    void end(int id) {
        rename(folder.path() / "proc" / std::to_string(id),
               folder.path() / ("ended" + std::to_string(++ended)));
    }

    void writeEntry(const std::string& name, const std::string& lines,
                    const std::string& dataFolder = "usr") {
        folder.write(dataFolder + "/applications/" + name + ".desktop",
                     "[Desktop Entry]\nType=Application\n" + lines);
    }

    /// "name icon" of each application, the icon left out where it is that of executables.
    std::vector<std::string> look() {
        list = nullptr;
        spawn(mainThread, storeList(source.get(), &list));
        settle();
        std::vector<std::string> result;
        for (const auto& application : *list) {
            const std::string icon = application.icon->name();
            result.push_back(application.localizedName.value_or("none") +
                             (icon == "application-x-executable" ? "" : " " + icon));
        }
        return result;
    }

    TemporaryFolder folder;
    std::filesystem::path upTime = folder.write("proc/uptime", "1000.25 3.5\n");
    std::unique_ptr<LinuxApplicationSource> source = std::make_unique<LinuxApplicationSource>(
        LinuxApplicationSource::Settings{folder.path() / "proc",
                                         {folder.path() / "home/share", folder.path() / "usr"},
                                         "de_DE.UTF-8",
                                         1000},
        worker, log);
    ApplicationList list;
    int ended = 0;
};

TEST_F(LinuxApplicationSourceTest, ListsWhatTheUserRunsByNumberWithReadableNames) {
    run({.name = "a) b (c", .id = 900, .command = "/bin/daemon"});
    run({.name = "zwei\nZeil\x1b\xe2\x82", .id = 31});
    run({.name = "", .id = 32});
    run({.name = "kthread", .id = 33, .stat = "S 1 0 0 0 0 2097152"});
    run({.name = "zombie", .id = 34, .stat = "Z 1 0 0 0 0 0"});
    run({.name = "other's", .id = 35, .user = 0});
    folder.write("proc/36/status", ""); // vanishes meanwhile
    folder.write("proc/37x/stat", "37 (x) S 1");
    EXPECT_THAT(look(), ElementsAre("zwei Zeil\xef\xbf\xbd\xef\xbf\xbd", "none", "a) b (c"));
    EXPECT_EQ(source->residentMemory(900), 3U * static_cast<unsigned>(getpagesize()));
    EXPECT_EQ(source->residentMemory(36), std::nullopt);
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

TEST_F(LinuxApplicationSourceTest, NamesTheLeaderOfAnApplicationAndGivesItsHelpersTheIcon) {
    writeEntry("org.x.Files", "Name=Files\nName[de]=Dateien\nIcon=files\nExec=xfiles\n");
    writeEntry("web", "Name=Web\nIcon=/opt/web.png\nExec=/opt/web/start %u\nStartupWMClass=Web\n");
    writeEntry("tool", "Name=Tool\nExec=tool\n");
    const auto unit = "app-gnome-org.x.Files-77.scope"s;
    run({.name = "sh", .id = 10, .command = "/bin/sh|-c|xfiles; true", .unit = unit});
    run({.name = "xfiles", .id = 11, .command = "/usr/bin/xfiles", .unit = unit});
    run({.name = "xfiles-thumb", .id = 12, .command = "/usr/lib/th", .unit = unit});
    run({.name = "web", .id = 20, .command = "/opt/web/web (deleted)|--first"});
    run({.name = "web",
         .id = 21,
         .stat = "S 20 0 0 0 0 0",
         .command = "/opt/web/web|--type=renderer"});
    run({.name = "python3", .id = 30, .command = "/usr/bin/python3.11|/home/x/tool"});
    run({.name = "tool", .id = 31, .command = "/usr/bin/tool", .unit = "app-unknown-1.scope"});
    EXPECT_THAT(look(), ElementsAre("sh files", "Dateien files", "xfiles-thumb files",
                                    "Web /opt/web.png", "web /opt/web.png", "Tool", "Tool"));
}

TEST_F(LinuxApplicationSourceTest, FindsTheEntryThatAProgramBelongsTo) {
    writeEntry("a", "Name=Window\nExec=edit --window\n");
    writeEntry("b", "Name=Editor\nExec=/usr/bin/edit %F\nTryExec=/usr/bin/ed\n");
    writeEntry("c", "Name=Silent\nExec=edit\nNoDisplay=true\n");
    writeEntry("d", "Name=Script\nExec=python3 /opt/a/main.py\n");
    writeEntry("e", "Name=Class\nExec=start-it\nStartupWMClass=Its-Window\n");
    writeEntry("kde/f", "Name=Deep\nExec=deep\n");
    writeEntry("h", "Name=Gone\nExec=x\n");
    writeEntry("h", "Hidden=true\n", "home/share");
    writeEntry("large", "Name=Large\nExec=x\n#" + std::string(1 << 20, ' '));
    const auto entries = folder.path() / "usr/applications";
    std::filesystem::create_directory_symlink(entries, entries / "loop");
    ::mkfifo((entries / "pipe.desktop").c_str(), 0600);

    run({.name = "edit", .id = 11, .command = "/opt/edit"});
    run({.name = "ed", .id = 12, .command = "/usr/bin/ed"});
    run({.name = "python3", .id = 13, .command = "/usr/bin/python3|/opt/a/main.py"});
    run({.name = "python3", .id = 14, .command = "/usr/bin/python3|/opt/b/main.py"});
    run({.name = "its-window", .id = 15, .command = "/opt/other"});
    run({.name = "x", .id = 16, .command = "/usr/bin/x"});
    run({.name = "y", .id = 17, .unit = "app-kde\\x2df-1.scope"});
    run({.name = "z", .id = 18, .unit = "app-loop\\x2da-1.scope"});
    EXPECT_THAT(look(),
                ElementsAre("Editor", "Editor", "Script", "python3", "Class", "x", "Deep", "z"));
}

TEST_F(LinuxApplicationSourceTest, KeepsWhatItKnowsUntilTheProcessOrTheEntriesChange) {
    run({.name = "edit", .id = 10, .command = "/usr/bin/edit"});
    run({.name = "panel", .id = 20, .command = "/usr/bin/panel", .startTime = 99'800});
    EXPECT_THAT(look(), ElementsAre("edit", "panel"));
    writeEntry("in/a/new/folder", "Name=Editor\nIcon=edit\nExec=edit\n");
    EXPECT_THAT(look(), ElementsAre("Editor edit", "panel"));
    const auto icon = list->front().icon;

    // An old process is not read again, a new one that is about to run something else is.
    folder.write("proc/10/stat", "unreadable");
    run({.name = "edit", .id = 20, .command = "/usr/bin/edit", .startTime = 99'800});
    EXPECT_THAT(look(), ElementsAre("Editor edit", "Editor edit"));
    writeText(upTime, "1002.0 3.5\n");
    look();
    const auto steady = list;
    look();
    EXPECT_EQ(list, steady) << "nothing to do";
    EXPECT_EQ(list->front().icon, icon) << "the same object";

    end(20);
    run({.name = "other", .id = 20, .command = "/usr/bin/other", .startTime = 99'801});
    const auto entry = folder.path() / "usr/applications/in/a/new/folder.desktop";
    rename(entry, folder.path() / "no.longer");
    EXPECT_THAT(look(), ElementsAre("edit", "other"));
    end(10);
    EXPECT_THAT(look(), ElementsAre("other"));
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

TEST_F(LinuxApplicationSourceTest, WhatIsBeingReadMayOutliveTheSource) {
    run({.name = "a", .id = 10});
    spawn(mainThread, storeList(source.get(), &list));
    mainThread.drain();
    source.reset();
    worker.drain();
    mainThread.drain();
    EXPECT_EQ(list->size(), 1U);
}

} // namespace
} // namespace tidewell
