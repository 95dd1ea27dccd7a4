#pragma once

#include "base/values/FileDescriptor.h"

#include <map>
#include <string>

namespace tidewell {

/// Notices changes in some folders, by asking the kernel, which keeps them until it is asked. One
/// thread.
class FolderWatch {
public:
    /// Watches nothing. Where the kernel gives no watch, nothing is ever noticed.
    FolderWatch();

    /// False where the system allows no watch, or not as many as were asked for.
    bool isWorking() const { return events_.isOpen() && hasRoom_; }

    /// Notices from now on what is made, written, renamed or removed in `folder`. Where there is no
    /// such folder, notices when it, or the first missing one on the way to it, comes to be.
    void add(const std::string& folder);

    /// Whether something changed since the last call. Never waits.
    bool takeChanges();

private:
    bool watch(const std::string& folder, const std::string& name);

    FileDescriptor events_;
    bool hasRoom_ = true;
    std::multimap<int, std::string> names_; // what counts in a watched folder; empty: everything
};

} // namespace tidewell
