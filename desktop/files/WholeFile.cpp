#include "desktop/files/WholeFile.h"

#include "base/values/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace tidewell {

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

FileDescriptor openFile(const std::filesystem::path& file, int flags, mode_t mode = 0) {
    return FileDescriptor(::open(file.c_str(), flags | O_CLOEXEC, mode));
}

std::error_code writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = ::write(descriptor, content.data(), content.size());
        if (count >= 0) {
            content.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return lastError();
        }
    }
    return {};
}

/// Writes a file that must not exist yet, to the disk.
std::error_code writeNewFile(const std::filesystem::path& file, std::string_view content) {
    auto descriptor = openFile(file, O_WRONLY | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR);
    if (!descriptor.isOpen()) {
        return lastError();
    }
    if (const auto error = writeAll(descriptor.get(), content)) {
        return error;
    }
    // Some file systems report a full disk only here.
    if (::fsync(descriptor.get()) != 0 || descriptor.close() != 0) {
        return lastError();
    }
    return {};
}

std::error_code createFolders(const std::filesystem::path& folder) {
    std::error_code error;
    if (folder.empty() || std::filesystem::is_directory(folder, error)) {
        return {};
    }
    if (folder.has_relative_path()) {
        if (const auto above = createFolders(folder.parent_path())) {
            return above;
        }
    }
    return ::mkdir(folder.c_str(), S_IRWXU) == 0 ? std::error_code() : lastError();
}

} // namespace

std::variant<std::string, std::error_code> readWholeFile(const std::filesystem::path& file,
                                                         std::size_t limit) {
    const auto descriptor = openFile(file, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat status{};
    if (!descriptor.isOpen() || ::fstat(descriptor.get(), &status) != 0) {
        return lastError();
    }
    if (!S_ISREG(status.st_mode)) {
        return std::make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                            : std::errc::not_supported);
    }
    std::string content;
    std::size_t length = 0;
    // Read up to the end rather than as much as the status says: that differs in /proc, and in a
    // file that is being written.
    for (;;) {
        content.resize(length + 16384);
        const ssize_t count =
            ::read(descriptor.get(), content.data() + length, content.size() - length);
        if (count > 0) {
            length += static_cast<std::size_t>(count);
        } else if (count == 0) {
            content.resize(length);
            return content;
        } else if (errno != EINTR) {
            return lastError();
        }
        if (length > limit) {
            return std::make_error_code(std::errc::file_too_large);
        }
    }
}

std::error_code replaceFile(const std::filesystem::path& file, std::string_view content) {
    if (const auto error = createFolders(file.parent_path())) {
        return error;
    }
    auto temporary = file;
    temporary += ".new";
    ::unlink(temporary.c_str()); // left by a crash; any other failure shows in the next step
    auto error = writeNewFile(temporary, content);
    if (!error && ::rename(temporary.c_str(), file.c_str()) != 0) {
        error = lastError();
    }
    if (error) {
        ::unlink(temporary.c_str());
        return error;
    }
    // The rename itself survives a power cut only once the folder is on the disk. Not every file
    // system can be asked for that, and the new content is in place either way.
    const auto folder =
        openFile(file.has_parent_path() ? file.parent_path() : ".", O_RDONLY | O_DIRECTORY);
    if (folder.isOpen()) {
        ::fsync(folder.get());
    }
    return {};
}

} // namespace tidewell
