#pragma once

#include "base/values/FileDescriptor.h"
#include "model/processes/ApplicationUsage.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

/// The folder /proc, or one like it. A process that has ended is normal: what is asked of it is
/// empty then. One thread.
class ProcessFolder {
public:
    explicit ProcessFolder(const std::string& path);

    struct Listed {
        ProcessIdentifier id;
        std::uint64_t inode; ///< made anew for each process, and sometimes for one that goes on
    };
    /// All processes, by number.
    std::vector<Listed> list() const;

    /// The first bytes, at most `limit`, of a file of a process, or of the folder itself where
    /// `id` is 0. Valid until the next call.
    static constexpr std::size_t largestFile = 32768;
    std::optional<std::string_view> read(ProcessIdentifier id, std::string_view file,
                                         std::size_t limit = 4096);

    /// The path of the executable, even if that has been replaced by an update meanwhile.
    std::string executable(ProcessIdentifier id);
    /// Its effective user.
    std::optional<std::uint32_t> user(ProcessIdentifier id) const;
    /// Whole seconds since the machine's start.
    std::optional<std::uint64_t> upTime();

private:
    FileDescriptor folder_;
    std::vector<char> buffer_ = std::vector<char>(largestFile);
};

} // namespace tidewell
