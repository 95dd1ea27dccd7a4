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

constexpr auto maps = "app-flatpak-org.x.Maps-77.scope";
constexpr auto unlisted = "app-flatpak-org.y.Unlisted-3.scope";
constexpr auto spot = "snap.spot.spot-0b5a5a5e-1111-2222-3333-444455556666.scope";
constexpr auto konsole = "app-org.kde.konsole-2.scope";
constexpr auto files = "app-gnome-org.x.Files-77.scope";
constexpr std::uint64_t mebibyte = 1 << 20;

Task<void> storeList(LinuxApplicationSource* source, ApplicationList* list) {
    *list = co_await source->runningApplications();
}

class LinuxApplicationSourceTest : public Surroundings {
protected:
    struct Process {
        std::string name;
        int id;
        std::string command = "/bin/true"; ///< its words, a bar between each two
        int parent = 1;
        std::string unit = "session-2.scope";
        int terminal = 0;
        std::string environment = "";
        int startTime = 100;
        std::string state = "S";
        std::string flags = "0";
    };

    void run(const Process& process) {
        const auto id = std::to_string(process.id);
        const std::filesystem::path path = "proc/" + id;
        std::string stat = id + " (" + process.name + ") " + process.state + " " +
                           std::to_string(process.parent) + " 0 0 ";
        stat += std::to_string(process.terminal) + " 0 " + process.flags;
        stat += " 0 0 0 0 0 0 0 0 0 0 0 0 " + std::to_string(process.startTime) + " 0 0\n";
        folder.write(path / "stat", stat);
        folder.write(path / "comm", process.name + "\n");
        folder.write(path / "statm", "9 3 0 1 0 0 0\n");
        folder.write(path / "cgroup", "0::/user.slice/" + process.unit + "\n");
        folder.write(path / "environ", withNul(process.environment));
        const std::string commandLine = withNul(process.command);
        folder.write(path / "cmdline", commandLine);
        std::filesystem::remove(folder.path() / path / "exe");
        if (!commandLine.empty()) {
            std::filesystem::create_symlink(commandLine.c_str(), folder.path() / path / "exe");
        }
    }

    static std::string withNul(std::string text) {
        std::ranges::replace(text, '|', '\0');
        return text;
    }

    /// In MiB.
    struct Memory {
        std::uint64_t resident;
        std::optional<std::uint64_t> proportional;
        std::uint64_t swapped = 0;
        std::uint64_t faults = 0; ///< MiB of pages
    };
    void use(int id, const Memory& memory) {
        const std::string process = "proc/" + std::to_string(id);
        const auto size = static_cast<std::uint64_t>(getpagesize());
        const auto pages = memory.resident * mebibyte / size;
        const auto kilobytes = [](std::uint64_t value) { return std::to_string(value * 1024); };
        folder.write(process + "/statm", "9 " + std::to_string(pages) + " 0 1 0 0 0\n");
        if (memory.proportional) {
            folder.write(process + "/smaps_rollup",
                         "0-f ---p 0 00:00 0 [rollup]\nPss: " + kilobytes(*memory.proportional) +
                             " kB\nPss_Anon: 1 kB\nAnonymous: " + kilobytes(memory.resident) +
                             " kB\nSwapPss: " + kilobytes(memory.swapped) + " kB\n");
        } else {
            folder.write(process + "/status", "VmSwap:\t" + kilobytes(memory.swapped) + " kB\n");
        }
        auto stat = readText(folder.path() / process / "stat");
        auto at = stat.find(')');
        for (int field = 0; field < 8; ++field) {
            at = stat.find(' ', at + 1);
        }
        stat.replace(at + 1, stat.find(' ', at + 1) - at - 1,
                     std::to_string(memory.faults * mebibyte / 4096));
        folder.write(process + "/stat", stat);
    }

    /// Out of the way, so that its inode is not given to another.
    void end(int id) {
        rename(folder.path() / "proc" / std::to_string(id),
               folder.path() / ("ended" + std::to_string(++ended)));
    }

    void writeEntry(const std::string& name, const std::string& lines,
                    const std::string& dataFolder = "usr") {
        folder.write(dataFolder + "/applications/" + name + ".desktop",
                     "[Desktop Entry]\nType=Application\n" + lines);
    }

    /// "name*processes icon" of each application; one process and the icon of executables are left
    /// out.
    std::vector<std::string> look() {
        list.clear();
        spawn(mainThread, storeList(source.get(), &list));
        settle();
        std::vector<std::string> result;
        for (const auto& application : list) {
            const std::string icon = application.icon->name();
            const auto count = application.usage->processes;
            result.push_back(application.localizedName.value_or("none") +
                             (count == 1 ? "" : "*" + std::to_string(count)) +
                             (icon == "application-x-executable" ? "" : " " + icon));
        }
        return result;
    }
    /// Its memory in MiB.
    std::uint64_t memoryOf(std::size_t row) {
        look();
        return list.at(row).memory.value() / mebibyte;
    }

    LinuxApplicationSource::Settings settings() {
        return {folder.path() / "proc",
                {folder.path() / "home/share", folder.path() / "usr"},
                "de_DE.UTF-8",
                geteuid()};
    }

    TemporaryFolder folder;
    std::filesystem::path upTime = folder.write("proc/uptime", "1000.25 3.5\n");
    std::unique_ptr<LinuxApplicationSource> source =
        std::make_unique<LinuxApplicationSource>(settings(), worker, log);
    ApplicationList list;
    int ended = 0;
};

TEST_F(LinuxApplicationSourceTest, ListsWhatTheUserRunsByNumberUnderNamesThatCanBeRead) {
    run({.name = "a) b (c", .id = 900, .command = "/bin/daemon"});
    run({.name = "zwei\nZeil\x1b\xe2\x82", .id = 31});
    run({.name = "", .id = 32, .command = "/bin/nameless"});
    run({.name = "\xe2\x80\xae \xe3\x85\xa4", .id = 33, .command = "/bin/blank (deleted)"});
    run({.name = "\xe2\x80\xaegpj.exe", .id = 34, .command = "/bin/disguise"});
    run({.name = "", .id = 35, .command = ""});
    run({.name = "a-name-that-is-", .id = 36, .command = "/bin/a-name-that-is-long"});
    run({.name = "python3", .id = 37, .command = "/bin/python3.11|-c|pass"});
    run({.name = "python3", .id = 38, .command = "/bin/python3.11|-u|/opt/tide tables.py"});
    run({.name = "very-long-scrip", .id = 39, .command = "/bin/dash|/opt/very-long-script.sh"});
    run({.name = "kthread", .id = 40, .flags = "2097152"});
    run({.name = "zombie", .id = 41, .state = "Z"});
    folder.write("proc/42/status", ""); // vanishes meanwhile
    folder.write("proc/43x/stat", "43 (x) S 1");
    EXPECT_THAT(look(), ElementsAre("zwei Zeil\xef\xbf\xbd\xef\xbf\xbd", "nameless", "blank",
                                    "gpj.exe", "none", "a-name-that-is-long", "python3",
                                    "tide tables.py", "very-long-script.sh", "a) b (c"));
    EXPECT_EQ(list.back().memory, 3U * static_cast<unsigned>(getpagesize()));
    EXPECT_EQ(list.back().usage->largestCommand, "/bin/daemon");

    auto others = settings();
    ++others.user;
    source = std::make_unique<LinuxApplicationSource>(others, worker, log);
    EXPECT_THAT(look(), IsEmpty()) << "another user's";
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

TEST_F(LinuxApplicationSourceTest, PutsTheProcessesOfAnApplicationIntoOneRow) {
    writeEntry("org.x.Maps", "Name=Maps\nIcon=maps\nExec=flatpak run --command=maps org.x.Maps\n");
    writeEntry("maps", "Name=The Host's Maps\nExec=maps\n");
    writeEntry("spot_spot", "Name=Spot\nExec=snap run spot\n");
    writeEntry("org.kde.konsole", "Name=Konsole\nExec=konsole\nCategories=X;TerminalEmulator;\n");
    writeEntry("top", "Name=Top\nExec=top\nTerminal=true\n");
    writeEntry("org.x.Files", "Name=Files\nName[de]=Dateien\nIcon=files\nExec=xfiles\n");
    writeEntry("copy", "Name=Copy\nExec=xfiles\n"); // of another unit
    writeEntry("web", "Name=Web\nIcon=/opt/web.png\nExec=/opt/web/start %u\nStartupWMClass=Web\n");
    writeEntry("shell", "Name=Shell\nExec=desktop-shell\nNoDisplay=true\n");
    writeEntry("kde/tides", "Name=Tides\nExec=/opt/tides-wrapper\n");
    writeEntry("image", "Name=Image\nExec=/home/Image-1.AppImage %F\n");
    const auto python = "/bin/python3.11"s;
    const auto gio = "GIO_LAUNCHED_DESKTOP_FILE="s + folder.path().string() +
                     "/usr/applications/kde/tides.desktop|GIO_LAUNCHED_DESKTOP_FILE_PID=";
    struct Case {
        const char* what;
        std::vector<Process> processes;
        std::vector<std::string> rows;
    };
    const std::vector<Case> cases{
        {"Flatpak, whatever its programs are called",
         {{"bwrap", 10, "/bin/bwrap|maps", 1, maps},
          {"bwrap", 11, "/bin/bwrap|--args", 10, maps},
          {"xdg-dbus-proxy", 12, "/bin/xdg-dbus-proxy", 1, maps},
          {"maps", 13, "/app/bin/maps", 11, maps},
          {"bwrap", 14, "/bin/bwrap|z", 1, unlisted},
          {"z", 15, "/app/bin/z", 14, unlisted},
          {"maps", 16, "/usr/bin/maps"},
          {"w", 17, "/app/bin/w", 1, "app-flatpak-org.w.Unlisted-3.scope"}},
         {"Maps*4 maps", "z*2", "The Host's Maps", "w"}},
        {"Snap", {{"a", 10, "/snap/a", 1, spot}, {"top", 11, "/snap/top", 10, spot}}, {"Spot*2"}},
        {"a terminal with what was started in it",
         {{"konsole", 10, "/bin/konsole", 1, konsole},
          {"bash", 11, "/bin/bash", 10, konsole, 7},
          {"bash", 12, "/bin/bash", 11, konsole, 7},
          {"top", 13, "/bin/top", 11, konsole, 7},
          {"make", 14, "/bin/make", 12, konsole, 7},
          {"sh", 15, "/bin/sh|-c|cc -c a.c", 14, konsole, 7},
          {"cc", 16, "/bin/cc", 15, konsole, 7},
          {"detached", 17, "/bin/detached", 1, konsole},
          {"web", 18, "/opt/web/web", 12, konsole, 7},
          {"b.sh", 19, "/bin/bash|/opt/b.sh", 11, konsole, 7}},
         {"Konsole", "bash*2", "Top", "make", "cc*2", "detached", "Web /opt/web.png", "b.sh"}},
        {"an application's unit with its wrapper, its helper and a guest",
         {{"sh", 10, "/bin/sh|-c|xfiles; true", 1, files},
          {"xfiles", 11, "/bin/xfiles", 10, files},
          {"xfiles-thumb", 8, "/usr/lib/th", 1, files},
          {"web", 9, "/opt/web/web", 11, files},
          {"xfiles", 14, "/bin/xfiles", 1, "app-gnome-org.x.Files-78.scope"}},
         {"Web /opt/web.png", "Dateien*4 files"}},
        {"a unit without an entry",
         {{"env", 10, "/bin/env|x", 1, "app-none-1.scope"},
          {"top", 11, "/bin/topper", 10, "app-none-1.scope"}},
         {"Top*2"}},
        {"no units: an entry's program with its descendants",
         {{"web", 10, "/opt/web/web (deleted)|--first"},
          {"web", 11, "/opt/web/web|--type=renderer", 10},
          {"crashpad", 12, "/opt/web/crashpad", 11},
          {"konsole", 13, "/bin/konsole", 12},
          {"x", 14, "/bin/x", 13},
          {"desktop-shell", 15, "/bin/desktop-shell"},
          {"y", 16, "/bin/y", 15},
          {"z", 17, "/bin/z", 10, "other.service"}},
         {"Web*3 /opt/web.png", "Konsole", "x", "Shell", "y", "z"}},
        {"no units: what GIO started, by itself or by way of another",
         {{"a", 10, "/opt/a", 1, "", 0, gio + "10"},
          {"b", 11, "/opt/b", 10, "", 0, gio + "10"},
          {"c", 12, "/opt/c", 1, "", 0, gio + "9"}},
         {"Tides*3"}},
        {"neither: the same program",
         {{"srv", 10, "/bin/srv|-d"},
          {"srv: worker", 11, "/bin/srv|worker", 10},
          {"child", 12, "/bin/child", 10},
          {"srv", 13, "/bin/srv"},
          {"python3", 14, python + "|/opt/pool.py"},
          {"python3", 15, python + "|-c|from multiprocessing", 14},
          {"python3", 16, python + "|/opt/other.py", 14},
          {"sh", 17, "/bin/sh|-c|a; b"},
          {"b", 18, "/bin/b", 17}},
         {"srv*2", "child", "srv", "pool.py*2", "other.py", "b*2"}},
        {"an AppImage and what serves its files",
         {{"Image-1.AppImag", 10, "/home/Image-1.AppImage"},
          {"AppRun", 11, "/bin/bash|/tmp/.m/AppRun", 1, "", 0,
           "APPDIR=/tmp/.m|APPIMAGE=/home/Image-1.AppImage"},
          {"top", 12, "/tmp/.m/usr/bin/image", 11, "", 0,
           "APPIMAGE=/home/Image-1.AppImage|APPDIR=/tmp/.m"},
          {"cat", 13, "/bin/cat", 12, "other.service", 0,
           "APPIMAGE=/home/Image-1.AppImage|APPDIR=/tmp/.m"}},
         {"Image*3", "cat"}},
        {"a cycle, by process numbers that were used again",
         {{"p", 10, "/bin/p", 11}, {"p", 11, "/bin/p", 10}, {"q", 12, "/bin/q", 12}},
         {"p*2", "q"}},
    };
    for (const Case& each : cases) {
        for (const Process& process : each.processes) {
            run(process);
        }
        EXPECT_EQ(look(), each.rows) << each.what;
        for (const Process& process : each.processes) {
            end(process.id);
        }
    }
}

TEST_F(LinuxApplicationSourceTest, FindsTheEntryThatAProgramBelongsTo) {
    writeEntry("a", "Name=Window\nExec=edit --window\n");
    writeEntry("b", "Name=Editor\nExec=/usr/bin/edit %F\nTryExec=/usr/bin/ed\n");
    writeEntry("c", "Name=Silent\nExec=edit\nNoDisplay=true\n");
    writeEntry("d", "Name=Script\nExec=python3 /opt/a/main.py\n");
    writeEntry("e", "Name=Class\nExec=start-it\nStartupWMClass=Its-Window\n");
    writeEntry("kde/f", "Name=Deep\nExec=deep\n");
    writeEntry("g", "Name=\xe2\x80\x8b\nExec=blank\n");
    writeEntry("h", "Name=Gone\nExec=x\n");
    writeEntry("i", "Name=Python\nExec=python3\n");
    writeEntry("h", "Name=Hidden\nExec=x\nHidden=true\n", "home/share");
    writeEntry("large", "Name=Large\nExec=x\n#" + std::string(1 << 20, ' '));
    const auto entries = folder.path() / "usr/applications";
    std::filesystem::create_directory_symlink(entries, entries / "loop");
    ::mkfifo((entries / "pipe.desktop").c_str(), 0600);

    run({.name = "GUI Thread", .id = 11, .command = "/opt/edit"});
    run({.name = "python3", .id = 13, .command = "/usr/bin/python3|/opt/a/main.py"});
    run({.name = "python3", .id = 14, .command = "/usr/bin/python3|/opt/b/main.py"});
    run({.name = "its-window", .id = 15, .command = "/opt/other"});
    run({.name = "x", .id = 16, .command = "/usr/bin/x"});
    run({.name = "y", .id = 17, .unit = "app-kde\\x2df-1.scope"});
    run({.name = "z", .id = 18, .unit = "app-loop\\x2da-1.scope"});
    run({.name = "blank", .id = 19, .command = "/usr/bin/blank"});
    EXPECT_THAT(look(),
                ElementsAre("Editor", "Script", "main.py", "Class", "x", "Deep", "z", "blank"));
    end(11);
    run({.name = "ed", .id = 12, .command = "/usr/bin/ed"});
    EXPECT_EQ(look().front(), "Editor");
}

TEST_F(LinuxApplicationSourceTest, SeesWhatAProcessHasBecomeWithinFiveLooksOrWhenItIsAskedAnew) {
    run({.name = "shell", .id = 10, .command = "/bin/shell"});
    run({.name = "young", .id = 20, .command = "/bin/young", .startTime = 99'800});
    EXPECT_THAT(look(), ElementsAre("shell", "young"));
    run({.name = "program", .id = 20, .command = "/bin/program", .startTime = 99'800});
    EXPECT_THAT(look(), ElementsAre("shell", "program")) << "at once while it is young";
    writeText(upTime, "1010.0 3.5\n");

    const auto lookUntil = [this](const std::string& name) {
        int looks = 1;
        while (looks < 99 && look().front() != name) {
            ++looks;
        }
        return looks;
    };
    run({.name = "renamed", .id = 10, .command = "/bin/shell"});
    EXPECT_LE(lookUntil("renamed"), 5);
    run({.name = "renamed", .id = 10, .command = "/bin/dash|/opt/next.sh"});
    run({.name = "dash", .id = 10, .command = "/bin/dash|/opt/next.sh"});
    EXPECT_LE(lookUntil("next.sh"), 5);
    run({.name = "dash", .id = 10, .command = "/bin/dash|/opt/last.sh"});
    EXPECT_LE(lookUntil("last.sh"), 5) << "the same but for its command line";
    run({.name = "last.sh", .id = 10, .command = "/bin/executed"});
    folder.write("proc/10/statm", "9 3 0 2 0 0 0\n");
    EXPECT_EQ(look().front(), "last.sh") << "from now on";
    EXPECT_EQ(list.front().usage->largestCommand, "/bin/executed");

    run({.name = "at once", .id = 10, .command = "/bin/again"});
    folder.write("proc/10/statm", "9 3 0 2 0 0 0\n");
    source->rest();
    EXPECT_EQ(look().front(), "at once");
}

TEST_F(LinuxApplicationSourceTest, KeepsWhatItKnowsUntilTheProcessOrTheEntriesChange) {
    run({.name = "edit", .id = 10, .command = "/usr/bin/edit"});
    EXPECT_THAT(look(), ElementsAre("edit"));
    const std::string file = folder.write("edit.png", "pixels");
    writeEntry("in/a/new/folder", "Name=Editor\nIcon=" + file + "\nExec=edit\n");
    EXPECT_THAT(look(), ElementsAre("Editor " + file));
    EXPECT_EQ(list.front().icon->content(), "pixels");
    const auto icon = list.front().icon;
    look();
    EXPECT_EQ(list.front().icon, icon) << "the same object";

    const auto entry = folder.path() / "usr/applications/in/a/new/folder.desktop";
    rename(entry, folder.path() / "no.longer");
    EXPECT_THAT(look(), ElementsAre("edit"));
    end(10);
    run({.name = "other", .id = 10, .command = "/usr/bin/other", .startTime = 101});
    EXPECT_THAT(look(), ElementsAre("other"));
    end(10);
    EXPECT_THAT(look(), IsEmpty());
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

TEST_F(LinuxApplicationSourceTest, CountsSharedMemoryOnceAndFollowsWhatChanges) {
    run({.name = "srv", .id = 10, .command = "/bin/srv"});
    run({.name = "srv", .id = 11, .command = "/bin/srv|child", .parent = 10});
    run({.name = "srv", .id = 12, .command = "/bin/srv|child", .parent = 10});
    run({.name = "vault", .id = 20, .command = "/bin/vault"});
    use(10, {500, 168, 5});
    use(11, {500, 166});
    use(12, {500, 166, 7});
    use(20, {100, std::nullopt, 3});
    EXPECT_EQ(memoryOf(0), 500U);
    const auto usage = *list[0].usage;
    EXPECT_EQ(usage.resident, 1500 * mebibyte);
    EXPECT_EQ(usage.proportional, 500 * mebibyte);
    EXPECT_EQ(usage.swapped, 12 * mebibyte);
    EXPECT_EQ(usage.largest, 10);
    EXPECT_EQ(list[1].memory, 100 * mebibyte) << "refused: the RSS";
    EXPECT_EQ(list[1].usage->proportional, std::nullopt);
    EXPECT_EQ(list[1].usage->swapped, 3 * mebibyte);

    use(11, {600, 266});
    EXPECT_EQ(memoryOf(0), 600U) << "100 MiB of its own";
    use(12, {500, 262, 0, 96});
    use(10, {500, 172});
    use(11, {600, 266});
    look();
    EXPECT_EQ(memoryOf(0), 700U) << "pages copied on write, which no RSS tells";
    end(12);
    use(10, {500, 250});
    use(11, {600, 350});
    EXPECT_EQ(memoryOf(0), 600U) << "who is left shares with fewer";
    run({.name = "srv", .id = 13, .command = "/bin/srv|child", .parent = 10});
    use(10, {500, 167});
    use(11, {600, 267});
    use(13, {500, 166});
    EXPECT_EQ(memoryOf(0), 600U) << "and with more";
    use(11, {600, 300});
    for (int looks = 0; looks < 3; ++looks) {
        look();
    }
    EXPECT_EQ(memoryOf(0), 633U) << "which nothing tells of: in turn";
}

TEST_F(LinuxApplicationSourceTest, ReadsSharesAsFarAsItsCreditGoesTheLargestFirst) {
    for (const int id : {10, 20, 30, 40}) {
        run({.name = std::to_string(id), .id = id, .command = "/bin/" + std::to_string(id)});
        use(id, {9000, 1000}); // twice as many MiB as all surveys together may walk
    }
    use(40, {9001, 1000});
    const auto read = [this] {
        look();
        std::string known;
        for (const auto& application : list) {
            known += application.usage->proportional ? '1' : '0';
        }
        return known;
    };
    EXPECT_EQ(read(), "1001");
    int looks = 0;
    for (; read() != "1111"; ++looks) {
        ASSERT_LT(looks, 20);
    }
    EXPECT_GT(looks, 4) << "the debt is paid off";
    for (const int id : {10, 20, 30, 40}) {
        use(id, {9000, 2000}); // which nothing tells of
    }
    const auto isRead = [](const auto& application) {
        return application.usage->proportional == 2000 * mebibyte;
    };
    while (std::ranges::count_if(list, isRead) == 0 && looks < 20) {
        look();
        ++looks;
    }
    EXPECT_EQ(std::ranges::count_if(list, isRead), 1) << "one at a time";
}

TEST_F(LinuxApplicationSourceTest, TakesAGiantByItsRssAndGoesOnWithTheOthers) {
    run({.name = "giant", .id = 10, .command = "/bin/giant"});
    use(10, {500'000, 400'000});
    run({.name = "small", .id = 20, .command = "/bin/small"});
    use(20, {100, 60});
    EXPECT_EQ(memoryOf(0), 500'000U);
    EXPECT_EQ(memoryOf(1), 60U);
}

TEST_F(LinuxApplicationSourceTest, WhatIsBeingReadMayOutliveTheSource) {
    run({.name = "a", .id = 10});
    spawn(mainThread, storeList(source.get(), &list));
    mainThread.drain();
    source.reset();
    worker.drain();
    mainThread.drain();
    EXPECT_EQ(list.size(), 1U);
}

} // namespace
} // namespace tidewell
