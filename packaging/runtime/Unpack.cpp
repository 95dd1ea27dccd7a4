#include "packaging/runtime/Image.h"

extern "C" {
#include <squashfuse/squashfuse.h>
}

#include <cerrno>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace runtime {

namespace {

constexpr std::size_t pieceSize = 1U << 20U;

void check(bool isRight, const std::string& what) {
    if (!isRight) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

void check(sqfs_err error) {
    if (error != SQFS_OK) {
        throw std::runtime_error("the image is damaged");
    }
}

void unpackFile(sqfs& files, sqfs_inode& inode, const std::string& path) {
    const int file =
        open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, inode.base.mode & 0777U);
    check(file >= 0, path);
    std::vector<char> piece(pieceSize);
    sqfs_off_t size = 0;
    for (sqfs_off_t offset = 0;; offset += size) {
        size = static_cast<sqfs_off_t>(piece.size());
        check(sqfs_read_range(&files, &inode, offset, &size, piece.data()));
        if (size == 0) {
            break;
        }
        check(write(file, piece.data(), static_cast<std::size_t>(size)) == size, path);
    }
    check(close(file) == 0, path);
}

void unpackOne(sqfs& files, sqfs_inode& inode, const std::string& path) {
    if (S_ISDIR(inode.base.mode)) {
        check(mkdir(path.c_str(), 0755) == 0, path);
    } else if (S_ISREG(inode.base.mode)) {
        unpackFile(files, inode, path);
    } else if (S_ISLNK(inode.base.mode)) {
        std::size_t size = inode.xtra.symlink_size + 1;
        std::string target(size, '\0');
        check(sqfs_readlink(&files, &inode, target.data(), &size));
        check(symlink(target.c_str(), path.c_str()) == 0, path);
    }
}

} // namespace

void unpack(const Image& image, const std::string& folder) {
    const int file = open(image.file.c_str(), O_RDONLY | O_CLOEXEC);
    check(file >= 0, image.file);
    sqfs files{};
    check(sqfs_init(&files, file, image.offset));
    sqfs_traverse traversal{};
    check(sqfs_traverse_open(&traversal, &files, sqfs_inode_root(&files)));
    sqfs_err error = SQFS_OK;
    while (sqfs_traverse_next(&traversal, &error)) {
        if (!traversal.dir_end) {
            sqfs_inode inode{};
            check(sqfs_inode_get(&files, &inode, sqfs_dentry_inode(&traversal.entry)));
            unpackOne(files, inode, folder + "/" + traversal.path);
        }
    }
    check(error);
    sqfs_traverse_close(&traversal);
    sqfs_destroy(&files);
    close(file);
}

void removeAtEnd(const std::string& folder) {
    const auto self = static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0));
    check(self >= 0, "pidfd_open");
    const pid_t parent = fork();
    check(parent >= 0, "fork");
    if (parent == 0) {
        // Before the second fork, so that a session's end cannot come in between.
        detach(self);
        if (fork() == 0) {
            pollfd end{.fd = 3, .events = POLLIN, .revents = 0};
            while (poll(&end, 1, -1) < 0 && errno == EINTR) {
            }
            std::error_code error; // nobody is left to be told
            std::filesystem::remove_all(folder, error);
        }
        _exit(0);
    }
    close(self);
    waitpid(parent, nullptr, 0);
}

} // namespace runtime
