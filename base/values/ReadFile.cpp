#include "base/values/ReadFile.h"

#include "base/values/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace tidewell {

namespace {

/// Without O_NONBLOCK, opening a FIFO would wait for its other end.
FileDescriptor openFile(int directory, const char* path) {
    return FileDescriptor(openat(directory, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

tl::unexpected<Error> cannotRead(const char* path, int cause) {
    return failure(std::string("Cannot read ") + path, {cause, std::generic_category()});
}

/// Fills `buffer` as far as the file goes; -1 with the reason in `errno`.
ssize_t readAll(int file, std::span<char> buffer) {
    std::size_t size = 0;
    while (size < buffer.size()) {
        const auto count = ::read(file, buffer.data() + size, buffer.size() - size);
        if (count < 0 && errno != EINTR) {
            return -1;
        }
        if (count == 0) {
            break;
        }
        size += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return static_cast<ssize_t>(size);
}

} // namespace

Result<std::string> readFile(int directory, const char* path, std::size_t limit) {
    const FileDescriptor file = openFile(directory, path);
    struct stat status{};
    if (!file.isOpen() || fstat(file.get(), &status) != 0) {
        return cannotRead(path, errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return cannotRead(path, S_ISDIR(status.st_mode) ? EISDIR : ENOTSUP);
    }
    if (std::cmp_greater(status.st_size, limit)) {
        return cannotRead(path, EFBIG);
    }
    std::string content;
    // One byte more than the file holds shows its end in one step.
    std::size_t room = static_cast<std::size_t>(std::max<off_t>(status.st_size, 4095)) + 1;
    for (;;) {
        const std::size_t size = content.size();
        content.resize(std::min(size + room, limit + 1));
        const auto count = readAll(file.get(), std::span(content).subspan(size));
        if (count < 0) {
            return cannotRead(path, errno);
        }
        content.resize(size + static_cast<std::size_t>(count));
        if (content.size() > limit) {
            return cannotRead(path, EFBIG);
        }
        if (static_cast<std::size_t>(count) < room) {
            return content;
        }
        room = content.size();
    }
}

Result<std::string_view> readStart(int directory, const char* path, std::span<char> buffer) {
    const FileDescriptor file = openFile(directory, path);
    const auto count = file.isOpen() ? readAll(file.get(), buffer) : -1;
    if (count < 0) {
        return cannotRead(path, errno);
    }
    return std::string_view(buffer.data(), static_cast<std::size_t>(count));
}

} // namespace tidewell
