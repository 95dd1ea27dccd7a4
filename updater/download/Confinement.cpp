#include "updater/download/Confinement.h"

#include "base/values/FileDescriptor.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <utility>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/landlock.h>
#include <linux/sched.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tidewell {

namespace {

/// Files can be read below the given paths, and nothing else be done with any.
bool restrictFiles(const std::vector<std::string>& readable) {
    constexpr std::uint64_t read =
        LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR | LANDLOCK_ACCESS_FS_EXECUTE;
    landlock_ruleset_attr all{};                                 // newer headers have more in it
    all.handled_access_fs = LANDLOCK_ACCESS_FS_MAKE_SYM * 2 - 1; // of the first version
    const FileDescriptor rules(
        static_cast<int>(::syscall(SYS_landlock_create_ruleset, &all, sizeof all, 0)));
    if (!rules.isOpen()) {
        return false;
    }
    for (const std::string& path : readable) {
        const FileDescriptor folder(::open(path.c_str(), O_PATH | O_CLOEXEC));
        if (!folder.isOpen()) {
            continue; // what is not there needs no permission
        }
        // The rights to folders have no meaning for a file, and would be refused.
        for (const std::uint64_t rights : {read, std::uint64_t{LANDLOCK_ACCESS_FS_READ_FILE}}) {
            const landlock_path_beneath_attr rule{rights, folder.get()};
            if (::syscall(SYS_landlock_add_rule, rules.get(), LANDLOCK_RULE_PATH_BENEATH, &rule,
                          0) == 0) {
                break;
            }
        }
    }
    return ::syscall(SYS_landlock_restrict_self, rules.get(), 0) == 0;
}

#if defined(__x86_64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t architecture = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t architecture = 0;
#endif

// What a program that fetches never does. A list of all that it does would break with each new
// version of the libraries.
constexpr auto refused = std::to_array<std::uint32_t>({
    SYS_execve,
    SYS_execveat,
    SYS_ptrace,
    SYS_process_vm_readv,
    SYS_process_vm_writev,
    SYS_kill,
    SYS_tkill,
    SYS_rt_sigqueueinfo,
    SYS_rt_tgsigqueueinfo,
    SYS_pidfd_getfd,
    SYS_pidfd_send_signal,
    SYS_bpf,
    SYS_perf_event_open,
    SYS_userfaultfd,
    SYS_io_uring_setup,
    SYS_io_uring_enter,
    SYS_io_uring_register,
    SYS_keyctl,
    SYS_add_key,
    SYS_request_key,
    SYS_unshare,
    SYS_setns,
    SYS_mount,
    SYS_umount2,
    SYS_chroot,
    SYS_pivot_root,
    SYS_open_by_handle_at,
    SYS_memfd_create,
    SYS_personality,
    SYS_shmget,
    SYS_shmat,
    SYS_msgget,
    SYS_mq_open,
    SYS_truncate,
    // What they do to other processes of the user's.
    SYS_setpriority,
    SYS_ioprio_set,
    SYS_sched_setaffinity,
    SYS_sched_setattr,
    SYS_sched_setparam,
    SYS_sched_setscheduler,
    SYS_migrate_pages,
    SYS_move_pages,
    440, // process_madvise, which older headers lack
    // Landlock does not know these.
    SYS_fchmod,
    SYS_fchmodat,
    452, // fchmodat2, which older headers lack
    SYS_fchown,
    SYS_fchownat,
    SYS_utimensat,
    SYS_setxattr,
    SYS_lsetxattr,
    SYS_fsetxattr,
    SYS_removexattr,
    SYS_lremovexattr,
    SYS_fremovexattr,
    463, // setxattrat
    466, // removexattrat
    469, // file_setattr
#ifdef SYS_fork
    SYS_fork,
    SYS_vfork,
    SYS_chmod,
    SYS_chown,
    SYS_lchown,
    SYS_utimes,
    SYS_futimesat,
#endif
#ifdef SYS_utime // which 32-bit Arm never had
    SYS_utime,
#endif
});

/// Refuses those calls, sockets but the network's, since Landlock would let it talk to the user's
/// buses and display, `clone` for anything but a thread, and `tgkill` and `prlimit64`, which the C
/// library takes to abort and to ask for limits, for any other process. `clone3`, whose arguments a
/// filter cannot see, is said not to exist, so that the C library takes `clone`.
bool restrictCalls() {
    if (architecture == 0) {
        return false;
    }
    const auto self = static_cast<std::uint32_t>(::getpid());
    constexpr auto load = static_cast<std::uint16_t>(BPF_LD | BPF_W | BPF_ABS);
    constexpr auto equal = static_cast<std::uint16_t>(BPF_JMP | BPF_JEQ | BPF_K);
    constexpr auto atLeast = static_cast<std::uint16_t>(BPF_JMP | BPF_JGE | BPF_K);
    constexpr auto bits = static_cast<std::uint16_t>(BPF_JMP | BPF_JSET | BPF_K);
    constexpr auto give = static_cast<std::uint16_t>(BPF_RET | BPF_K);
    constexpr std::uint32_t refuse = SECCOMP_RET_ERRNO | EPERM;
    std::vector<sock_filter> program{
        {load, 0, 0, offsetof(seccomp_data, arch)},
        {equal, 1, 0, architecture},
        {give, 0, 0, SECCOMP_RET_KILL_PROCESS},
        {load, 0, 0, offsetof(seccomp_data, nr)},
        {atLeast, 0, 1, 0x40000000}, // the x32 calls of an x86-64 kernel
        {give, 0, 0, SECCOMP_RET_KILL_PROCESS},
        {equal, 0, 1, SYS_clone3},
        {give, 0, 0, SECCOMP_RET_ERRNO | ENOSYS},
    };
    for (const std::uint32_t call : refused) {
        program.push_back({equal, 0, 1, call});
        program.push_back({give, 0, 0, refuse});
    }
    // An argument's lower half, little-endian, is all that the kernel looks at of these.
    const auto rest = std::to_array<sock_filter>({
        {equal, 0, 4, SYS_socket},
        {load, 0, 0, offsetof(seccomp_data, args)}, // the family
        {equal, 11, 0, AF_INET},
        {equal, 10, 0, AF_INET6},
        {equal, 9, 8, AF_NETLINK}, // by which addresses are sorted
        {equal, 0, 2, SYS_clone},
        {load, 0, 0, offsetof(seccomp_data, args)}, // the flags
        {bits, 6, 5, CLONE_THREAD},
        {equal, 1, 0, SYS_tgkill},
        {equal, 0, 4, SYS_prlimit64},
        {load, 0, 0, offsetof(seccomp_data, args)}, // the process
        {equal, 2, 0, self},
        {equal, 1, 0, 0}, // the same
        {give, 0, 0, refuse},
        {give, 0, 0, SECCOMP_RET_ALLOW},
    });
    program.insert(program.end(), rest.begin(), rest.end());
    const sock_fprog filter{static_cast<std::uint16_t>(program.size()), program.data()};
    return ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

bool limit(__rlimit_resource resource, rlim_t most) {
    const rlimit both{most, most};
    return ::setrlimit(resource, &both) == 0;
}

} // namespace

std::string confine(const std::vector<std::string>& readable) {
    constexpr rlim_t descriptors = 256;
    constexpr rlim_t seconds = 1800; // of the processor
    bool isLimited = limit(RLIMIT_CORE, 0) && limit(RLIMIT_FSIZE, 0) &&
                     limit(RLIMIT_NOFILE, descriptors) && limit(RLIMIT_CPU, seconds);
#ifndef TIDEWELL_SANITIZED // sanitizers map terabytes
    constexpr rlim_t memory = rlim_t{256} << 20;
    isLimited = limit(RLIMIT_DATA, memory) && isLimited;
#endif
    std::string lacking;
    for (const auto& [isDone, name] :
         {std::pair(isLimited, "limits"),
          {::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0, "no_new_privs"},
          {restrictFiles(readable), "Landlock"},
          {restrictCalls(), "seccomp"}}) {
        if (!isDone) {
            lacking += (lacking.empty() ? "" : ", ") + std::string(name);
        }
    }
    return lacking;
}

} // namespace tidewell
