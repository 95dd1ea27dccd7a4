#include "packaging/runtime/Image.h"

extern "C" {
#include <squashfuse/ll.h>
}

#include <array>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace runtime {

namespace {

/// One image in one process, by one thread. It is what squashfuse's callbacks are given, who know
/// of its first member only.
struct Served {
    sqfs_ll files;
    fuse_session* session;
    std::size_t openFiles;
};

Served& served(fuse_req_t request) {
    return *static_cast<Served*>(fuse_req_userdata(request));
}

void countingOpen(fuse_req_t request, fuse_ino_t inode, fuse_file_info* file) {
    Served& served = runtime::served(request);
    sqfs_ll_op_open(request, inode, file);
    served.openFiles += file->fh == 0 ? 0 : 1; // squashfuse's handle, where it could be opened
}

/// A running program has its executable open, from before its first instruction to after its last.
void countingRelease(fuse_req_t request, fuse_ino_t inode, fuse_file_info* file) {
    Served& served = runtime::served(request);
    sqfs_ll_op_release(request, inode, file);
    if (--served.openFiles == 0) {
        fuse_session_exit(served.session);
    }
}

fuse_lowlevel_ops operations() {
    fuse_lowlevel_ops operations{};
    operations.lookup = sqfs_ll_op_lookup;
    operations.forget = sqfs_ll_op_forget;
    operations.getattr = sqfs_ll_op_getattr;
    operations.readlink = sqfs_ll_op_readlink;
    operations.open = countingOpen;
    operations.read = sqfs_ll_op_read;
    operations.release = countingRelease;
    operations.opendir = sqfs_ll_op_opendir;
    operations.readdir = sqfs_ll_op_readdir;
    operations.releasedir = sqfs_ll_op_releasedir;
    operations.statfs = stfs_ll_op_statfs;
    operations.getxattr = sqfs_ll_op_getxattr;
    operations.listxattr = sqfs_ll_op_listxattr;
    return operations;
}

void serve(const Image& image, const std::string& folder, int ready) {
    Served served{};
    if (sqfs_open_image(&served.files.fs, image.file.c_str(), image.offset) != SQFS_OK ||
        sqfs_ll_init(&served.files) != SQFS_OK) {
        return;
    }
    std::array<std::string, 3> words{"squashfs", "-o", "ro,nosuid,nodev,fsname=squashfs"};
    std::array<char*, 3> pointers{words[0].data(), words[1].data(), words[2].data()};
    fuse_args arguments = FUSE_ARGS_INIT(static_cast<int>(pointers.size()), pointers.data());
    const fuse_lowlevel_ops table = operations();
    served.session = fuse_session_new(&arguments, &table, sizeof table, &served);
    if (served.session == nullptr || fuse_session_mount(served.session, folder.c_str()) != 0) {
        return;
    }
    if (write(ready, "", 1) == 1) {
        close(ready);
        fuse_session_loop(served.session);
    }
    fuse_session_unmount(served.session);
    rmdir(folder.c_str());
}

} // namespace

bool mount(const Image& image, const std::string& folder) {
    std::array<int, 2> ready{};
    if (pipe2(ready.data(), O_CLOEXEC) != 0) {
        return false;
    }
    // Its parent ends at once, so that the program has no child that it knows nothing of.
    const pid_t parent = fork();
    if (parent == 0) {
        if (fork() == 0) {
            detach(ready[1]);
            serve(image, folder, 3);
        }
        _exit(0);
    }
    close(ready[1]);
    waitpid(parent, nullptr, 0);
    char byte = 0;
    const bool isMounted = read(ready[0], &byte, 1) == 1;
    close(ready[0]);
    return isMounted;
}

} // namespace runtime
