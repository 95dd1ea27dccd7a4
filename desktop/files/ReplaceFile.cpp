#include "desktop/files/ReplaceFile.h"

#include "base/values/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>

namespace tidewell {

namespace {

tl::unexpected<Error> lastError(const char* tried, const std::filesystem::path& file) {
    return failure(std::string("Could not ") + tried + ' ' + file.string(),
                   {errno, std::generic_category()});
}

/// std::filesystem::create_directories, but open to the user alone.
Result<> createFolders(const std::filesystem::path& folder) {
    // Not every file system says of a folder above, in which nothing may be made, that it is there.
    std::error_code error; // it is not there, then
    if (std::filesystem::is_directory(folder, error)) {
        return {};
    }
    std::filesystem::path made;
    for (const auto& name : folder) {
        made /= name;
        if (::mkdir(made.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
            return lastError("create", made);
        }
    }
    return {};
}

bool writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = ::write(descriptor, content.data(), content.size());
        if (count >= 0) {
            content.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

/// Writes a file that must not exist yet, to the disk.
bool writeNewFile(const std::filesystem::path& file, std::string_view content) {
    FileDescriptor descriptor(
        ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    // Some file systems report a full disk only by fsync() or close().
    return descriptor.isOpen() && writeAll(descriptor.get(), content) &&
           ::fsync(descriptor.get()) == 0 && descriptor.close() == 0;
}

} // namespace

// Not by QSaveFile: it ignores a failing fsync(), and a write() that the disk took only a part of.
Result<> replaceFile(const std::filesystem::path& file, std::string_view content) {
    static std::mutex oneAtATime;
    const std::lock_guard lock(oneAtATime);
    if (auto folders = createFolders(file.parent_path()); !folders) {
        return folders;
    }
    auto temporary = file;
    temporary += ".new";
    ::unlink(temporary.c_str()); // left by a crash; any other failure shows in the next step
    if (!writeNewFile(temporary, content) || ::rename(temporary.c_str(), file.c_str()) != 0) {
        auto error = lastError("write", file);
        ::unlink(temporary.c_str());
        return error;
    }
    // The rename itself survives a power cut only once the folder is on the disk. Not every file
    // system can be asked for that, and the new content is in place either way.
    const FileDescriptor folder(::open(file.has_parent_path() ? file.parent_path().c_str() : ".",
                                       O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) {
        ::fsync(folder.get());
    }
    return {};
}

} // namespace tidewell
