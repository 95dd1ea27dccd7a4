#include "model/processes/linux/ProcessFolder.h"

#include "base/text/Words.h"
#include "base/values/OpenFolder.h"
#include "base/values/ReadFile.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <sys/stat.h>

namespace tidewell {

namespace {

/// "ID/FILE" without allocating memory: most of a survey is reading small files.
class FilePath {
public:
    FilePath(ProcessIdentifier id, std::string_view file) {
        char* end = text_.data();
        if (id != 0) {
            end = std::to_chars(end, end + 16, id).ptr;
            *end++ = '/';
        }
        file.copy(end, text_.size() - 18);
    }
    const char* get() const { return text_.data(); }

private:
    std::array<char, 48> text_{};
};

} // namespace

ProcessFolder::ProcessFolder(const std::string& path)
    : folder_(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

std::vector<ProcessFolder::Listed> ProcessFolder::list() const {
    std::vector<Listed> listed;
    const int folder = openat(folder_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const OpenFolder directory(folder < 0 ? nullptr : fdopendir(folder));
    if (!directory) {
        return listed;
    }
    while (const dirent* file = readdir(directory.get())) {
        if (const auto id = number<ProcessIdentifier>(file->d_name); id && *id > 0) {
            listed.push_back({.id = *id, .inode = file->d_ino});
        }
    }
    std::ranges::sort(listed, {}, &Listed::id);
    return listed;
}

std::optional<std::string_view> ProcessFolder::read(ProcessIdentifier id, std::string_view file,
                                                    std::size_t limit) {
    const auto text = readStart(folder_.get(), FilePath(id, file).get(),
                                std::span(buffer_).first(std::min(limit, buffer_.size())));
    return text ? std::optional(*text) : std::nullopt;
}

std::string ProcessFolder::executable(ProcessIdentifier id) {
    const auto size = readlinkat(folder_.get(), FilePath(id, "exe").get(), buffer_.data(), 4096);
    std::string_view target(buffer_.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    constexpr std::string_view deleted = " (deleted)";
    if (target.ends_with(deleted)) {
        target.remove_suffix(deleted.size());
    }
    return std::string(target);
}

std::optional<std::uint32_t> ProcessFolder::user(ProcessIdentifier id) const {
    // The kernel gives the folder to the effective user, the files in it not always.
    struct stat status{};
    return fstatat(folder_.get(), FilePath(id, "").get(), &status, 0) == 0
               ? std::optional(status.st_uid)
               : std::nullopt;
}

std::optional<std::uint64_t> ProcessFolder::upTime() {
    const auto text = read(0, "uptime");
    return text ? number<std::uint64_t>(text->substr(0, text->find('.'))) : std::nullopt;
}

} // namespace tidewell
