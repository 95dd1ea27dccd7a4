#include "model/processes/linux/ReadFile.h"

#include "base/values/FileDescriptor.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>

namespace tidewell {

std::optional<std::string> readFile(int directory, const char* path, std::size_t limit) {
    // Without O_NONBLOCK, opening a pipe would wait for its other end.
    const FileDescriptor file(openat(directory, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status{};
    if (!file.isOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::string text;
    // The kernel's own files say that they are empty. One byte more than there is shows the end.
    std::size_t room = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) + 1 : 1024;
    while (text.size() < limit) {
        const std::size_t size = text.size();
        text.resize(std::min(size + room, limit));
        const auto count = read(file.get(), text.data() + size, text.size() - size);
        text.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0) {
            return text;
        }
        if (count < 0 && errno != EINTR) {
            return std::nullopt;
        }
        room = 4096;
    }
    return text;
}

} // namespace tidewell
