#pragma once

#include "base/ports/Log.h"
#include "model/processes/linux/DesktopEntry.h"
#include "model/processes/linux/FolderWatch.h"

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace tidewell {

/// The program that a process runs.
struct RunProgram {
    std::string path;               ///< of the executable or script; empty when unknown
    std::vector<std::string> names; ///< of the file, and what the process calls itself
};

/// The .desktop files of the machine and the user, cached until inotify reports a change. Pointers
/// to entries stay valid until refresh() returns true. One thread.
class DesktopEntries {
public:
    /// `dataFolders` are the XDG data directories, each with a folder "applications". An entry
    /// of an earlier one hides those of later ones with the same identifier. `log` must outlive the
    /// entries.
    DesktopEntries(std::vector<std::string> dataFolders, std::vector<std::string> languages,
                   Log& log);
    DesktopEntries(const DesktopEntries&) = delete;
    DesktopEntries& operator=(const DesktopEntries&) = delete;

    /// Reads all entries at the first call and after changes. Returns whether it did; pointers to
    /// earlier entries dangle then. What cannot be read or is too large is left out.
    bool refresh();

    /// The entry of an identifier, as in "org.gnome.Nautilus"; null for none.
    const DesktopEntry* withIdentifier(const std::string& identifier) const;

    /// The entry whose `Exec`, `TryExec` or `StartupWMClass` names the program, in this order;
    /// null for none. Of several, those that menus show come first, then those that start the
    /// program without arguments.
    const DesktopEntry* running(const RunProgram& program) const;

private:
    struct Folder {
        std::string path;
        std::string identifierPrefix;
        int depth;
    };
    void readFolder(const Folder& folder);
    void readEntry(int folder, const std::string& file, const std::string& identifier);
    void index();

    std::vector<std::string> dataFolders_;
    std::vector<std::string> languages_;
    Log& log_;
    std::optional<FolderWatch> watch_; // none before the first reading

    using Known = std::unordered_map<std::string, const DesktopEntry*>;
    std::unordered_map<std::string, DesktopEntry> byIdentifier_;
    Known byPath_;
    Known byName_;
    Known byWindowClass_;
    std::set<std::pair<std::uint64_t, std::uint64_t>>
        visited_; // folders, by device and inode: symbolic links can make a cycle
};

/// Whether `entry` names `program`, even if running() prefers another entry that does, too.
bool isRunBy(const DesktopEntry& entry, const RunProgram& program);

/// $XDG_DATA_HOME and $XDG_DATA_DIRS, or their defaults.
std::vector<std::string> usualDataFolders();

} // namespace tidewell
