#include "model/memory/probes/darwin/ToolRunner.h"

#include "base/values/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <system_error>

// POSIX leaves this declaration to the program; only some systems have it in a header.
extern char** environ; // NOLINT(readability-redundant-declaration,*-non-const-global-variables)

namespace tidewell {

namespace {

/// For calls that return an errno value.
void check(int error) {
    if (error != 0) {
        throw std::system_error(error, std::generic_category());
    }
}

/// For calls that return -1 and set `errno`.
int checked(int result) {
    check(result < 0 ? errno : 0);
    return result;
}

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

/// Both ends are close-on-exec, and above STDERR_FILENO: where this process has closed its standard
/// streams, the child's dup2() would overwrite them.
Pipe makePipe() {
    std::array<int, 2> ends{};
    checked(pipe(ends.data()));
    const FileDescriptor readEnd(ends[0]);
    const FileDescriptor writeEnd(ends[1]);
    return {FileDescriptor(checked(fcntl(readEnd.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1))),
            FileDescriptor(checked(fcntl(writeEnd.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1)))};
}

pid_t start(const std::string& path, const FileDescriptor& output, const FileDescriptor& error) {
    struct Actions {
        posix_spawn_file_actions_t value{};
        Actions() { check(posix_spawn_file_actions_init(&value)); }
        Actions(const Actions&) = delete;
        Actions& operator=(const Actions&) = delete;
        ~Actions() { posix_spawn_file_actions_destroy(&value); }
    } actions;
    check(posix_spawn_file_actions_adddup2(&actions.value, output.get(), STDOUT_FILENO));
    check(posix_spawn_file_actions_adddup2(&actions.value, error.get(), STDERR_FILENO));

    std::string name = path;
    const std::array<char*, 2> arguments{name.data(), nullptr};
    pid_t child = 0;
    check(posix_spawn(&child, path.c_str(), &actions.value, nullptr, arguments.data(), environ));
    return child;
}

/// The exit status of the child, with `options` as for waitpid(); empty when it still runs.
std::optional<int> exitStatus(pid_t child, int options) {
    int status = 0;
    pid_t exited = -1;
    do {
        exited = waitpid(child, &status, options);
    } while (exited < 0 && errno == EINTR);
    if (checked(exited) == 0) {
        return std::nullopt;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status);
}

/// One output of the tool, collected as it comes.
class Stream {
public:
    explicit Stream(FileDescriptor readEnd)
        : readEnd_(std::move(readEnd)) {}

    bool isOpen() const { return readEnd_.isOpen(); }
    pollfd request() const { return {.fd = readEnd_.get(), .events = POLLIN, .revents = 0}; }
    std::string takeBytes() { return std::move(bytes_); }

    /// Takes in some bytes, `limit` at most, and gives their number. Waits where there are none
    /// yet; closes at the end.
    std::size_t takeIn(std::size_t limit) {
        std::array<char, 16384> chunk{};
        const auto count = read(readEnd_.get(), chunk.data(), std::min(limit, chunk.size()));
        if (count > 0) {
            bytes_.append(chunk.data(), static_cast<std::size_t>(count));
            return static_cast<std::size_t>(count);
        }
        if (count == 0 || errno != EINTR) {
            if (count < 0) {
                bytes_.clear();
            }
            readEnd_.close();
        }
        return 0;
    }

    /// Takes in what is there by now, and closes.
    void finish() {
        int pending = 0;
        if (isOpen() && ioctl(readEnd_.get(), FIONREAD, &pending) == 0) {
            while (isOpen() && pending > 0) {
                pending -= static_cast<int>(takeIn(static_cast<std::size_t>(pending)));
            }
        }
        readEnd_.close();
    }

private:
    FileDescriptor readEnd_;
    std::string bytes_;
};

ToolResult runToEnd(const std::string& path) {
    auto outputPipe = makePipe();
    auto errorPipe = makePipe();
    const pid_t child = start(path, outputPipe.writeEnd, errorPipe.writeEnd);
    outputPipe.writeEnd.close();
    errorPipe.writeEnd.close();

    Stream output(std::move(outputPipe.readEnd));
    Stream error(std::move(errorPipe.readEnd));
    std::optional<int> status;
    while (!status && (output.isOpen() || error.isOpen())) {
        // Both pipes reach their end with the tool, unless a child process that it leaves behind
        // holds them open. POSIX cannot wait for a pipe and a process at once, so then the exit is
        // noticed this late.
        constexpr int milliseconds = 50;
        std::array requests{output.request(), error.request()};
        const bool ready = poll(requests.data(), requests.size(), milliseconds) > 0;
        status = exitStatus(child, WNOHANG);
        if (status) {
            // All that the tool wrote is in the pipes now. Anything later is not its own.
            output.finish();
            error.finish();
        } else if (ready) {
            for (const auto& [stream, request] :
                 {std::pair(&output, requests[0]), std::pair(&error, requests[1])}) {
                if (request.revents != 0) {
                    stream->takeIn(std::string::npos);
                }
            }
        }
    }
    if (!status) {
        status = exitStatus(child, 0);
    }
    return {.status = *status,
            .standardOutput = output.takeBytes(),
            .standardError = error.takeBytes()};
}

} // namespace

Result<ToolResult> ToolRunner::run() const {
    try {
        return runToEnd(path_);
    } catch (const std::system_error& error) {
        return failure(error.code().message());
    }
}

} // namespace tidewell
