#pragma once

#include "base/values/FileDescriptor.h"

#include <map>
#include <string>

namespace tidewell {

/// Notices changes in some folders by inotify, whose queue is read when it is asked for. One
/// thread.
class FolderWatch {
public:
    /// Watches nothing yet.
    FolderWatch();

    /// False where inotify is not available, or out of watches: changes are missed then.
    bool isWorking() const { return events_.isOpen() && hasRoom_; }

    /// Notices from now on what is created, written, renamed or deleted in `folder`. Where there is
    /// no such folder, its closest ancestor is watched until the next part of the path is created.
    void add(const std::string& folder);

    /// Whether something changed since the last call. Does not block.
    bool takeChanges();

private:
    bool watch(const std::string& folder, const std::string& name);

    FileDescriptor events_;
    bool hasRoom_ = true;
    std::multimap<int, std::string>
        names_; // file names that count, by watch descriptor; empty: all
};

} // namespace tidewell
