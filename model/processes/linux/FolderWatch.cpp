#include "model/processes/linux/FolderWatch.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <sys/inotify.h>

namespace tidewell {

namespace {

bool isThere(const std::filesystem::path& path) {
    std::error_code error; // what cannot be looked up counts as missing
    return std::filesystem::exists(path, error);
}

} // namespace

FolderWatch::FolderWatch()
    : events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

void FolderWatch::add(const std::string& folder) {
    // The folder may be created between the two attempts to watch.
    for (int attempt = 0; attempt < 8 && !watch(folder, {}); ++attempt) {
        std::filesystem::path missing(folder);
        while (missing.has_relative_path() &&
               !watch(missing.parent_path().string(), missing.filename().string())) {
            missing = missing.parent_path();
        }
        if (!isThere(missing)) {
            return;
        }
    }
}

bool FolderWatch::watch(const std::string& folder, const std::string& name) {
    constexpr std::uint32_t changes = IN_CREATE | IN_DELETE | IN_MOVE | IN_CLOSE_WRITE | IN_ATTRIB |
                                      IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    const int descriptor = inotify_add_watch(events_.get(), folder.c_str(), changes);
    if (descriptor < 0) {
        hasRoom_ = hasRoom_ && errno != ENOSPC && errno != ENOMEM;
        return false;
    }
    names_.emplace(descriptor, name);
    return true;
}

bool FolderWatch::takeChanges() {
    bool changed = false;
    alignas(inotify_event) std::array<char, 4096> buffer{};
    for (;;) {
        const auto size = read(events_.get(), buffer.data(), buffer.size());
        if (size <= 0) {
            return changed;
        }
        for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char* text = buffer.data() + at + sizeof event;
            const std::string_view name(text, event.len == 0 ? 0 : strnlen(text, event.len));
            at += sizeof event + event.len;

            // A queue overflow has no known descriptor, events of the folder itself no name.
            const auto [first, last] = names_.equal_range(event.wd);
            changed = changed || first == last || name.empty();
            for (auto counts = first; counts != last; ++counts) {
                changed = changed || counts->second.empty() || counts->second == name;
            }
        }
    }
}

} // namespace tidewell
