#include "model/processes/linux/Process.h"

#include "base/text/Words.h"
#include "base/values/Difference.h"
#include "model/processes/linux/ProcessFiles.h"
#include "model/processes/linux/ReadableLine.h"

#include <algorithm>
#include <unistd.h>

namespace tidewell {

namespace {

// Enough of a command line to know a script by.
constexpr std::size_t wordLimit = 32;
constexpr std::size_t longestCommandLine = 240; // bytes of it that are kept
/// Seconds that a new process has to call exec(), and its desktop to give it a unit. Until then it
/// looks like its parent.
constexpr std::uint64_t settlingTime = 3;

bool hasEnded(const ProcessStat& stat) {
    return stat.state == 'Z' || stat.state == 'X';
}

std::string_view commandLineOf(ProcessFolder& folder, ProcessIdentifier id) {
    return folder.read(id, "cmdline").value_or("");
}

std::string readableCommandLine(std::string_view commandLine) {
    std::string line(commandLine.substr(0, longestCommandLine));
    while (line.ends_with('\0')) {
        line.pop_back();
    }
    std::ranges::replace(line, '\0', ' ');
    return readableLine(line) + (commandLine.size() > longestCommandLine ? "…" : "");
}

/// "/usr/share/applications/kde/okular.desktop" has the identifier "kde-okular".
std::string identifierOf(std::string_view entryFile) {
    constexpr std::string_view folder = "/applications/";
    constexpr std::string_view suffix = ".desktop";
    const auto at = entryFile.rfind(folder);
    if (at == std::string_view::npos || !entryFile.ends_with(suffix)) {
        return {};
    }
    std::string identifier(entryFile.substr(at + folder.size()));
    identifier.resize(identifier.size() - suffix.size());
    std::ranges::replace(identifier, '/', '-');
    return identifier;
}

void learnProgram(Process& process, std::string_view commandLine) {
    auto words = commandWords(commandLine, wordLimit);
    const std::string calledAs(words.empty() ? "" : lastComponent(words.front()));
    if (!process.executable.empty()) {
        words.resize(std::max<std::size_t>(words.size(), 1));
        words.front() = process.executable;
    }
    const Program program = programOfProcess(words);
    process.isScript = program.isScript;
    process.isWrapper = program.isWrapper;
    process.program.path = program.name.starts_with('/') ? program.name : "";
    const std::string file(lastComponent(program.name));
    const std::string executable(lastComponent(process.executable));
    auto& names = process.program.names;
    if (!file.empty()) {
        names.push_back(file);
    }
    // What a process calls itself is often the link that it was started by. An interpreter's own
    // name does not tell what it runs.
    std::string own = process.commandName;
    const bool isInterpreters =
        program.isScript && (executable.starts_with(own) || calledAs.starts_with(own));
    constexpr std::size_t longestName = 15; // the kernel cuts the rest off
    if (own.size() == longestName) {
        for (const std::string& whole : {calledAs, executable, file}) {
            if (whole.starts_with(own)) {
                own = whole;
                break;
            }
        }
    }
    if (!own.empty() && !isInterpreters) {
        names.push_back(own);
    }
    process.name = readableLine(isInterpreters && !file.empty() ? file : own);
    if (process.name.empty()) {
        process.name = readableLine(executable.empty() ? calledAs : executable);
    }
}

/// What its surroundings tell of how it was started.
void learnOrigin(ProcessFolder& folder, Process& process) {
    if (const auto groups = folder.read(process.id, "cgroup")) {
        process.unitName = innermostUnit(*groups);
        process.unit = parseApplicationUnit(process.unitName);
    }
    const auto environment = folder.read(process.id, "environ", ProcessFolder::largestFile);
    if (!environment) {
        return;
    }
    process.launchedEntry =
        identifierOf(environmentVariable("GIO_LAUNCHED_DESKTOP_FILE", *environment));
    process.launchedProcess =
        number<ProcessIdentifier>(
            environmentVariable("GIO_LAUNCHED_DESKTOP_FILE_PID", *environment))
            .value_or(0);
    // Programs that it starts inherit the variables, but do not lie in it.
    const auto mountPoint = environmentVariable("APPDIR", *environment);
    if (!mountPoint.empty() && process.program.path.starts_with(mountPoint)) {
        process.appImage = environmentVariable("APPIMAGE", *environment);
    }
    if (!process.appImage.empty()) {
        process.program.path = process.appImage;
    }
}

} // namespace

std::uint64_t ProcessMemory::estimate() const {
    const std::uint64_t now = resident.value_or(0);
    if (!proportional) {
        return now;
    }
    const std::uint64_t shrunk = differenceOrZero(residentThen, now);
    const std::uint64_t grown = differenceOrZero(now, residentThen);
    return std::min(differenceOrZero(*proportional, shrunk) + grown, now);
}

void Process::findEntries(const DesktopEntries& entries) {
    unitEntry = nullptr;
    if (unit) {
        for (const std::string& identifier : unit->identifiers) {
            unitEntry = unitEntry != nullptr ? unitEntry : entries.withIdentifier(identifier);
        }
    }
    ownEntry = entries.running(program);
    launchEntry = entries.withIdentifier(launchedEntry);
}

std::optional<Process> learnProcess(ProcessFolder& folder, const ProcessFolder::Listed& listed,
                                    std::uint32_t user, std::optional<std::uint64_t> upTime) {
    static const auto ticksASecond = static_cast<std::uint64_t>(sysconf(_SC_CLK_TCK));
    const auto text = folder.read(listed.id, "stat");
    auto stat = text ? parseProcessStat(*text) : std::nullopt;
    if (!stat) {
        return std::nullopt;
    }
    Process process;
    process.id = listed.id;
    process.inode = listed.inode;
    process.startTime = stat->startTime;
    process.user = folder.user(listed.id).value_or(~user);
    process.parent = stat->parent;
    process.terminal = stat->terminal;
    process.commandName = std::move(stat->commandName);
    const auto age = stat->startTime / ticksASecond;
    process.isSettled = !upTime || age + settlingTime <= *upTime ||
                        age > *upTime; // of another machine, with another start
    process.isWanted = process.user == user && !hasEnded(*stat) && !stat->isKernelThread;
    if (process.isWanted) {
        process.executable = folder.executable(listed.id);
        const std::string_view commandLine = commandLineOf(folder, listed.id);
        process.commandHash = std::hash<std::string_view>()(commandLine);
        process.commandLine = readableCommandLine(commandLine);
        learnProgram(process, commandLine);
        learnOrigin(folder, process);
    }
    return process;
}

bool isUnchanged(ProcessFolder& folder, const Process& process) {
    if (folder.user(process.id) != process.user) {
        return false;
    }
    if (!process.isWanted) {
        return true;
    }
    const auto name = folder.read(process.id, "comm"); // and a line feed
    return name && name->substr(0, name->size() - 1) == process.commandName &&
           std::hash<std::string_view>()(commandLineOf(folder, process.id)) == process.commandHash;
}

} // namespace tidewell
