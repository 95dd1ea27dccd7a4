#pragma once

#include <array>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

// What a sampling step cannot do without: opening, reading and closing its files.

namespace tidewell {

inline void readWhole(const char* path) {
    static std::array<char, 16384> buffer;
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file >= 0) {
        while (read(file, buffer.data(), buffer.size()) > 0) {
        }
        close(file);
    }
}

/// Reads the files of one sampling step, found in the same way.
inline void readTheFilesOfAStep() {
    readWhole("/proc/meminfo");
    readWhole("/proc/spl/kstat/zfs/arcstats");
    if (access("/sys/class/zram-control", F_OK) != 0) {
        return;
    }
    DIR* directory = opendir("/sys/block");
    if (directory == nullptr) {
        return;
    }
    while (const dirent* entry = readdir(directory)) {
        if (std::strncmp(entry->d_name, "zram", 4) == 0) {
            std::array<char, 300> path{};
            std::snprintf(path.data(), path.size(), "/sys/block/%s/mm_stat", entry->d_name);
            readWhole(path.data());
        }
    }
    closedir(directory);
}

} // namespace tidewell
