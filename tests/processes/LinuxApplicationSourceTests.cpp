#include "processes/linux/LinuxApplicationSource.h"
#include "tests/fakes/Surroundings.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    LinuxApplicationSourceTest() {
        create_directories(folder.path() / "proc");
        writeText(folder.path() / "proc/uptime", "1000.25 3.5\n");
        source = std::make_unique<LinuxApplicationSource>(
            LinuxApplicationSource::Settings{.processFolder = folder.path() / "proc",
                                             .dataFolders = {folder.path() / "share"},
                                             .locale = "de_DE.UTF-8",
                                             .user = 1000},
            worker, log);
    }

    struct Process {
        std::string name;
        int id;
        int parent = 1;
        std::vector<std::string> words = {};
        std::string unit = "session-2.scope";
        char state = 'S';
        int user = 1000;
        int startTime = 100;
        int flags = 0;
    };

    void run(const Process& process) {
        const auto path = folder.path() / "proc" / std::to_string(process.id);
        create_directories(path);
        writeText(path / "stat",
                  std::to_string(process.id) + " (" + process.name + ") " + process.state + " " +
                      std::to_string(process.parent) + " 0 0 0 0 " + std::to_string(process.flags) +
                      " 0 0 0 0 0 0 0 0 0 0 0 0 " + std::to_string(process.startTime) + " 0 0\n");
        const auto user = std::to_string(process.user);
        writeText(path / "status", "Name:\tx\nUid:\t0\t" + user + "\t0\t0\n");
        writeText(path / "statm", "9 3 0 0 0 0 0\n");
        writeText(path / "cgroup", "0::/user.slice/" + process.unit + "\n");
        std::string commandLine;
        for (const auto& word : process.words) {
            commandLine += word + '\0';
        }
        writeText(path / "cmdline", commandLine);
        if (!process.words.empty()) {
            std::filesystem::remove(path / "exe");
            std::filesystem::create_symlink(process.words.front(), path / "exe");
        }
    }

    /// Out of the way, so that its file number is not given to another.
    void end(int id) {
        rename(folder.path() / "proc" / std::to_string(id),
               folder.path() / ("ended" + std::to_string(++ended)));
    }

    void writeEntry(const std::string& identifier, const std::string& lines) {
        const auto path = folder.path() / "share/applications" / (identifier + ".desktop");
        create_directories(path.parent_path());
        writeText(path, "[Desktop Entry]\nType=Application\n" + lines);
    }

    /// "name icon" of each application.
    std::vector<std::string> look() {
        list = nullptr;
        spawn(mainThread, storeList(source.get(), &list));
        settle();
        std::vector<std::string> result;
        for (const auto& application : *list) {
            result.push_back(application.localizedName.value_or("none") + " " +
                             application.icon->icon());
        }
        return result;
    }

    TemporaryFolder folder;
    std::unique_ptr<LinuxApplicationSource> source;
    ApplicationList list;
    int ended = 0;
};

constexpr const char* plain = "application-x-executable";

TEST_F(LinuxApplicationSourceTest, ListsWhatTheUserRunsByNumberWithReadableNames) {
    run({.name = "a) b (c", .id = 900, .words = {"/bin/daemon"}});
    run({.name = "zwei\nZeil\x1b\xe2\x82", .id = 31});
    run({.name = "", .id = 32});
    run({.name = "kthread", .id = 33, .flags = 0x200000});
    run({.name = "zombie", .id = 34, .state = 'Z'});
    run({.name = "other's", .id = 35, .user = 0});
    run({.name = "vanishes", .id = 36});
    std::filesystem::remove(folder.path() / "proc/36/stat");
    create_directories(folder.path() / "proc/37x");
    EXPECT_THAT(look(), ElementsAre("zwei Zeil\xef\xbf\xbd\xef\xbf\xbd "s + plain, "none "s + plain,
                                    "a) b (c "s + plain));
    EXPECT_EQ(source->residentMemory(900), 3U * static_cast<unsigned>(getpagesize()));
    EXPECT_EQ(source->residentMemory(36), std::nullopt);
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

TEST_F(LinuxApplicationSourceTest, NamesTheLeaderOfAnApplicationAndGivesItsHelpersTheIcon) {
    writeEntry("org.x.Files", "Name=Files\nName[de]=Dateien\nIcon=files\nExec=xfiles\n");
    writeEntry("web", "Name=Web\nIcon=/opt/web.png\nExec=/opt/web/start %u\nStartupWMClass=Web\n");
    writeEntry("tool", "Name=Tool\nExec=tool\n");
    const auto unit = "app-gnome-org.x.Files-77.scope"s;
    run({.name = "sh", .id = 10, .words = {"/bin/sh", "-c", "xfiles; true"}, .unit = unit});
    run({.name = "xfiles", .id = 11, .parent = 10, .words = {"/usr/bin/xfiles"}, .unit = unit});
    run({.name = "xfiles-thumb", .id = 12, .parent = 11, .words = {"/usr/lib/th"}, .unit = unit});
    run({.name = "web", .id = 20, .words = {"/opt/web/web (deleted)", "--first"}});
    run({.name = "web", .id = 21, .parent = 20, .words = {"/opt/web/web", "--type=renderer"}});
    run({.name = "python3", .id = 30, .words = {"/usr/bin/python3.11", "/home/x/tool"}});
    run({.name = "tool", .id = 31, .words = {"/usr/bin/tool"}, .unit = "app-unknown-1.scope"});
    const std::string files = " files";
    EXPECT_THAT(look(),
                ElementsAre("sh files", "Dateien files", "xfiles-thumb files", "Web /opt/web.png",
                            "web /opt/web.png", "Tool "s + plain, "Tool "s + plain));
}

TEST_F(LinuxApplicationSourceTest, KeepsWhatItKnowsUntilTheProcessOrTheEntriesChange) {
    writeEntry("edit", "Name=Editor\nIcon=edit\nExec=edit\n");
    run({.name = "edit", .id = 10, .words = {"/usr/bin/edit"}});
    run({.name = "panel", .id = 20, .words = {"/usr/bin/panel"}, .startTime = 99'800});
    EXPECT_THAT(look(), ElementsAre("Editor edit", "panel "s + plain));
    const auto icon = list->front().icon;

    // An old process is not read again, a new one that is about to run something else is.
    writeText(folder.path() / "proc/10/stat", "unreadable");
    run({.name = "edit", .id = 20, .words = {"/usr/bin/edit"}, .startTime = 99'800});
    EXPECT_THAT(look(), ElementsAre("Editor edit", "Editor edit"));
    writeText(folder.path() / "proc/uptime", "1002.0 3.5\n");
    look();
    const auto steady = list;
    look();
    EXPECT_EQ(list, steady) << "nothing to do";
    EXPECT_EQ(list->front().icon, icon) << "the same object";

    end(20);
    run({.name = "other", .id = 20, .words = {"/usr/bin/other"}, .startTime = 99'801});
    writeEntry("edit", "Name=Notes\nIcon=notes\nExec=edit\n");
    EXPECT_THAT(look(), ElementsAre("Notes notes", "other "s + plain));
    end(10);
    EXPECT_THAT(look(), ElementsAre("other "s + plain));
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
