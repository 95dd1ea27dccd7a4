#include "updater/download/Fetch.h"

#include "base/values/FileDescriptor.h"
#include "updater/UpdateProblem.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tidewell {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t bufferSize = std::size_t{16} << 10;
constexpr qsizetype longestReason = 500; // bytes
constexpr qsizetype mostErrorOutput = qsizetype{64} << 10;

tl::unexpected<Error> systemFailure(const char* what, int error) {
    return failure(std::string(what) + ": " + std::generic_category().message(error),
                   UpdateProblem::broken);
}

/// What TLS and proxies need of the environment, and nothing else. No ticket of the user's answers
/// a server that asks for one.
std::vector<std::string> environmentForFetching() {
    std::vector<std::string> environment{"KRB5CCNAME=MEMORY:", "KRB5_CONFIG=/dev/null"};
    for (const char* name :
         {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY",
          "no_proxy", "NO_PROXY", "SSL_CERT_FILE", "SSL_CERT_DIR"}) {
        if (const char* value = std::getenv(name)) { // NOLINT(concurrency-mt-unsafe): only read
            environment.push_back(std::string(name) + '=' + value);
        }
    }
    return environment;
}

/// The fetching program. Killed and reaped by the destructor, if it was not before.
class Child {
public:
    Child() = default;
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            wait();
        }
    }

    Result<> start(std::vector<std::string> arguments, std::vector<std::string> environment) {
        FileDescriptor outEnd;
        FileDescriptor errorEnd;
        if (!makePipe(out, outEnd) || !makePipe(errors, errorEnd)) {
            return systemFailure("no pipe", errno);
        }
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&actions, outEnd.get(), STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, errorEnd.get(), STDERR_FILENO);
        const int error =
            ::posix_spawn(&pid_, arguments[0].c_str(), &actions, nullptr,
                          pointersTo(arguments).data(), pointersTo(environment).data());
        ::posix_spawn_file_actions_destroy(&actions);
        if (error != 0) {
            pid_ = 0;
            return systemFailure(arguments[0].c_str(), error);
        }
        end = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid_, 0)));
        return end.isOpen() ? Result<>() : systemFailure("no pidfd", errno);
    }

    /// Waits for its end: its exit status, none if it crashed.
    std::optional<int> wait() {
        int status = 0;
        while (::waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
        }
        pid_ = 0;
        return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
    }

    FileDescriptor out; // these two do not block
    FileDescriptor errors;
    FileDescriptor end; // readable once it has ended

private:
    static std::vector<char*> pointersTo(std::vector<std::string>& texts) {
        std::vector<char*> pointers;
        pointers.reserve(texts.size() + 1);
        for (std::string& text : texts) {
            pointers.push_back(text.data());
        }
        pointers.push_back(nullptr);
        return pointers;
    }
    static bool makePipe(FileDescriptor& readEnd, FileDescriptor& writeEnd) {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            return false;
        }
        readEnd = FileDescriptor(ends[0]);
        writeEnd = FileDescriptor(ends[1]);
        return ::fcntl(readEnd.get(), F_SETFL, O_NONBLOCK) == 0;
    }

    pid_t pid_ = 0;
};

enum class Piece { taken, none, end };

/// Hands the next piece on, if there is one.
Result<Piece> takePiece(const FileDescriptor& from,
                        const std::function<Result<>(QByteArrayView)>& take) {
    std::array<char, bufferSize> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    const ssize_t count = ::read(from.get(), buffer.data(), buffer.size());
    if (count == 0) {
        return Piece::end;
    }
    if (count < 0) {
        return errno == EAGAIN || errno == EINTR ? Result<Piece>(Piece::none)
                                                 : systemFailure("cannot read", errno);
    }
    return take(QByteArrayView(buffer.data(), count)).map([] { return Piece::taken; });
}

} // namespace

Result<std::string> fetch(const FetchSettings& settings, const QUrl& address,
                          std::chrono::milliseconds limit, const std::stop_token& stop,
                          const std::function<Result<>(QByteArrayView piece)>& take) {
    const FileDescriptor called(::eventfd(0, EFD_CLOEXEC));
    const std::stop_callback callOff(stop, [&called] { ::eventfd_write(called.get(), 1); });
    Child child;
    if (auto started = child.start(
            {QFile::encodeName(settings.program).toStdString(), address.toEncoded().toStdString(),
             std::to_string(settings.silence.count()), std::to_string(::getpid()),
             QFile::encodeName(settings.authorities).toStdString()},
            environmentForFetching());
        !started) {
        return tl::unexpected(started.error());
    }

    const auto start = Clock::now();
    auto lastPiece = start;
    QByteArray reason;
    const auto takeBytes = [&](QByteArrayView piece) {
        lastPiece = Clock::now();
        return take(piece);
    };
    const auto takeReason = [&reason](QByteArrayView piece) -> Result<> {
        reason += piece;
        return reason.size() <= mostErrorOutput
                   ? Result<>()
                   : failure("the fetching program says too much", UpdateProblem::broken);
    };
    std::array<pollfd, 4> watched{{{child.out.get(), POLLIN, 0},
                                   {child.errors.get(), POLLIN, 0},
                                   {child.end.get(), POLLIN, 0},
                                   {called.get(), POLLIN, 0}}};
    auto& [out, errors, end, calledOff] = watched;
    for (bool isOver = false; !isOver;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(
            std::min(lastPiece + settings.silence, start + limit) - Clock::now());
        if (left.count() <= 0) {
            return failure("it took too long", UpdateProblem::timedOut);
        }
        if (::poll(watched.data(), watched.size(), static_cast<int>(left.count())) < 0 &&
            errno != EINTR) {
            return systemFailure("cannot wait", errno);
        }
        if (calledOff.revents != 0) {
            return failure("it was called off", UpdateProblem::broken);
        }
        const auto bytes = takePiece(child.out, takeBytes);
        const auto words = takePiece(child.errors, takeReason);
        for (const auto* piece : {&bytes, &words}) {
            if (!*piece) {
                return tl::unexpected(piece->error());
            }
        }
        out.fd = *bytes == Piece::end ? -1 : out.fd; // or it would be reported again and again
        errors.fd = *words == Piece::end ? -1 : errors.fd;
        // What was written before its end is in the pipes by then.
        isOver = end.revents != 0 && *bytes != Piece::taken && *words != Piece::taken;
    }
    const auto status = child.wait();
    std::string said = reason.simplified().left(longestReason).toStdString();
    if (status == 0) {
        return said;
    }
    const auto problem = static_cast<UpdateProblem>(status.value_or(0));
    return failure(said, problem >= UpdateProblem::broken && problem <= UpdateProblem::timedOut
                             ? problem
                             : UpdateProblem::broken);
}

} // namespace tidewell
