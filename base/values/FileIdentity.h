#pragma once

#include <cstdint>
#include <optional>

#include <sys/stat.h>

namespace tidewell {

/// Tells whether a path still leads to the same file with the same content.
struct FileIdentity {
    std::uint64_t device;
    std::uint64_t inode;
    std::int64_t length;
    std::int64_t seconds; ///< of the last change
    std::int64_t nanoseconds;

    bool operator==(const FileIdentity&) const = default;
};

/// Empty where there is no file. Any thread.
inline std::optional<FileIdentity> identityOf(const char* path) {
    struct stat status{};
    if (::stat(path, &status) != 0) {
        return std::nullopt;
    }
    return FileIdentity{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                        status.st_mtim.tv_nsec};
}

} // namespace tidewell
