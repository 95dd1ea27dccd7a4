#include "model/processes/linux/DesktopEntries.h"

#include "base/text/Words.h"
#include "base/values/OpenFolder.h"
#include "base/values/ReadFile.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>

namespace tidewell {

namespace {

// Far above what real machines have; limits that keep a survey from hanging.
constexpr std::size_t largestEntry = std::size_t{1} << 20U; // bytes
constexpr std::size_t mostEntries = 10'000;
constexpr int deepestFolder = 4;

constexpr std::string_view suffix = ".desktop";

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                    : character;
    });
    return lower;
}

bool isPath(std::string_view program) {
    return program.starts_with('/');
}

/// Whether the program may be known by the last part of its path, too: the files of scripts share
/// their names, and programs are often started by way of links.
bool isKnownByName(const Program& program) {
    return !program.name.empty() && !(program.isScript && isPath(program.name));
}

bool isNamed(const RunProgram& program, std::string_view name) {
    return !name.empty() && std::ranges::find(program.names, name) != program.names.end();
}

} // namespace

DesktopEntries::DesktopEntries(std::vector<std::string> dataFolders,
                               std::vector<std::string> languages, Log& log)
    : dataFolders_(std::move(dataFolders))
    , languages_(std::move(languages))
    , log_(log) {}

bool DesktopEntries::refresh() {
    if (watch_ && !watch_->takeChanges()) {
        return false;
    }
    watch_.emplace(); // before reading, so that no change is missed
    byIdentifier_.clear();
    visited_.clear();
    for (const std::string& folder : dataFolders_) {
        readFolder({.path = folder + "/applications", .identifierPrefix = "", .depth = 0});
    }
    if (!watch_->isWorking()) {
        logError(log_, "Changes of the desktop entries will not be noticed before the next start",
                 "refresh()");
    }
    index();
    return true;
}

void DesktopEntries::readFolder(const Folder& folder) {
    watch_->add(folder.path);
    const OpenFolder directory(opendir(folder.path.c_str()));
    struct stat status{};
    if (!directory || fstat(dirfd(directory.get()), &status) != 0 ||
        !visited_.emplace(status.st_dev, status.st_ino).second) {
        return;
    }
    while (const dirent* file = readdir(directory.get())) {
        const std::string name(file->d_name);
        if (name.ends_with(suffix)) {
            const auto stem = name.substr(0, name.size() - suffix.size());
            readEntry(dirfd(directory.get()), name, folder.identifierPrefix + stem);
        } else if (!name.starts_with('.') && folder.depth < deepestFolder &&
                   fstatat(dirfd(directory.get()), file->d_name, &status, 0) == 0 &&
                   S_ISDIR(status.st_mode)) {
            readFolder({.path = folder.path + "/" + name,
                        .identifierPrefix = folder.identifierPrefix + name + "-",
                        .depth = folder.depth + 1});
        }
    }
}

void DesktopEntries::readEntry(int folder, const std::string& file, const std::string& identifier) {
    if (byIdentifier_.size() >= mostEntries || byIdentifier_.contains(identifier)) {
        return;
    }
    const auto text = readFile(folder, file.c_str(), largestEntry);
    if (!text) {
        return;
    }
    if (auto entry = parseDesktopEntry(*text, languages_)) {
        byIdentifier_.emplace(identifier, *std::move(entry));
    }
}

void DesktopEntries::index() {
    byPath_.clear();
    byName_.clear();
    byWindowClass_.clear();
    std::vector<std::pair<std::string_view, const DesktopEntry*>> entries;
    for (const auto& [identifier, entry] : byIdentifier_) {
        if (!entry.isHidden) {
            entries.emplace_back(identifier, &entry);
        }
    }
    std::ranges::sort(entries, {}, [](const auto& pair) {
        const auto& [identifier, entry] = pair;
        return std::tuple(!entry->isShown, entry->program.hasArguments, identifier);
    });
    // emplace() keeps the first entry that names a program.
    for (const auto& [identifier, entry] : entries) {
        if (isPath(entry->program.name)) {
            byPath_.emplace(entry->program.name, entry);
        }
        if (isKnownByName(entry->program)) {
            byName_.emplace(lastComponent(entry->program.name), entry);
        }
    }
    for (const auto& [identifier, entry] : entries) {
        if (!entry->tryProgram.empty()) {
            byName_.emplace(lastComponent(entry->tryProgram), entry);
        }
        if (!entry->windowClass.empty()) {
            byWindowClass_.emplace(lowerCase(entry->windowClass), entry);
        }
    }
}

const DesktopEntry* DesktopEntries::withIdentifier(const std::string& identifier) const {
    const auto found = byIdentifier_.find(identifier);
    return found == byIdentifier_.end() || found->second.isHidden ? nullptr : &found->second;
}

const DesktopEntry* DesktopEntries::running(const RunProgram& program) const {
    if (const auto found = byPath_.find(program.path); found != byPath_.end()) {
        return found->second;
    }
    for (const std::string& name : program.names) {
        if (const auto found = byName_.find(name); found != byName_.end()) {
            return found->second;
        }
    }
    for (const std::string& name : program.names) {
        const auto found = byWindowClass_.find(lowerCase(name));
        if (found != byWindowClass_.end()) {
            return found->second;
        }
    }
    return nullptr;
}

bool isRunBy(const DesktopEntry& entry, const RunProgram& program) {
    const bool samePath = isPath(program.path) && entry.program.name == program.path;
    const bool sameName =
        isKnownByName(entry.program) && isNamed(program, lastComponent(entry.program.name));
    const auto hasClass = [&entry](const std::string& name) {
        return !name.empty() && lowerCase(name) == lowerCase(entry.windowClass);
    };
    return samePath || sameName || isNamed(program, lastComponent(entry.tryProgram)) ||
           std::ranges::any_of(program.names, hasClass);
}

std::vector<std::string> usualDataFolders() {
    const auto variable = [](const char* name) -> std::string {
        const char* value = std::getenv(name);
        return value == nullptr ? "" : value;
    };
    // The base directory rules ignore paths that are not absolute.
    std::vector<std::string> folders;
    const auto add = [&folders](std::string_view folder) {
        if (isPath(folder)) {
            folders.emplace_back(folder);
        }
    };
    const std::string home = variable("XDG_DATA_HOME");
    add(isPath(home) ? home : variable("HOME") + "/.local/share");
    std::string shared = variable("XDG_DATA_DIRS");
    if (shared.empty()) {
        shared = "/usr/local/share:/usr/share";
    }
    for (std::string_view rest = shared; !rest.empty();) {
        const auto folder = rest.substr(0, rest.find(':'));
        add(folder);
        rest.remove_prefix(std::min(folder.size() + 1, rest.size()));
    }
    return folders;
}

} // namespace tidewell
