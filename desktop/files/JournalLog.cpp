#include "desktop/files/JournalLog.h"

// The location of a record is that of the caller of logMessage, not of this file.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <systemd/sd-journal.h>

#include <sys/stat.h>
#include <sys/uio.h>
#include <syslog.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>

namespace tidewell {

namespace {

std::string entryText(const LogRecord& record) {
    std::string text;
    text.reserve(record.file.size() + record.function.size() + record.message.size() + 16);
    text.append(record.file).append(".").append(record.function).append("[");
    return text.append(std::to_string(record.line)).append("]: ").append(record.message);
}

/// `text` on one line: whatever a message carries, it cannot look like two or steer a terminal.
std::string onOneLine(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string line;
    line.reserve(text.size());
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (character == '\n') {
            line += "\\n";
        } else if (code < 0x20 || code == 0x7f) {
            line.append("\\x").append(1, digits[code >> 4U]).append(1, digits[code & 0x0fU]);
        } else {
            line += character;
        }
    }
    return line;
}

/// Keeps SIGPIPE from this thread, without changing the process's handler.
class WithoutBrokenPipeSignal final {
public:
    WithoutBrokenPipeSignal() {
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&brokenPipe_);
        sigaddset(&brokenPipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &brokenPipe_, &earlierMask_);
    }
    WithoutBrokenPipeSignal(const WithoutBrokenPipeSignal&) = delete;
    WithoutBrokenPipeSignal& operator=(const WithoutBrokenPipeSignal&) = delete;
    ~WithoutBrokenPipeSignal() {
        const timespec noTime{};
        while (!wasPending_ && sigtimedwait(&brokenPipe_, nullptr, &noTime) < 0 && errno == EINTR) {
        }
        pthread_sigmask(SIG_SETMASK, &earlierMask_, nullptr);
    }

private:
    bool wasPending_ = false;
    sigset_t brokenPipe_{};
    sigset_t earlierMask_{};
};

/// In one call, so that the lines of two threads do not mix. A failure has no place to be reported.
void writeLine(int descriptor, std::string_view line) {
    const WithoutBrokenPipeSignal guard;
    while (!line.empty()) {
        const ssize_t count = ::write(descriptor, line.data(), line.size());
        if (count > 0) {
            line.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return;
        }
    }
}

} // namespace

JournalLog::JournalLog(std::string subsystem, LogLevel minimumLevel)
    : JournalLog(std::move(subsystem), minimumLevel, Sinks{}) {}

JournalLog::JournalLog(std::string subsystem, LogLevel minimumLevel, Sinks sinks)
    : subsystem_(std::move(subsystem))
    , minimumLevel_(minimumLevel)
    , sinks_(std::move(sinks)) {}

bool JournalLog::isEnabled(LogLevel level) const {
    return level >= minimumLevel_;
}

void JournalLog::write(const LogRecord& record) {
    const std::string text = entryText(record);
    if (!writeToJournal(record, text)) {
        std::string line(record.level == LogLevel::error ? "tidewell: error: "
                                                         : "tidewell: info: ");
        line.append(record.category).append(": ").append(text);
        writeLine(sinks_.errorDescriptor, onOneLine(line) + "\n");
    }
}

bool JournalLog::writeToJournal(const LogRecord& record, const std::string& text) const {
    struct stat status{};
    if (::stat(sinks_.journalSocket.c_str(), &status) != 0 || !S_ISSOCK(status.st_mode)) {
        return false;
    }
    std::array fields{"MESSAGE=" + text,
                      "PRIORITY=" +
                          std::to_string(record.level == LogLevel::error ? LOG_ERR : LOG_INFO),
                      "CODE_FILE=" + std::string(record.file),
                      "CODE_FUNC=" + std::string(record.function),
                      "CODE_LINE=" + std::to_string(record.line),
                      std::string("SYSLOG_IDENTIFIER=tidewell"),
                      "TIDEWELL_SUBSYSTEM=" + subsystem_,
                      "TIDEWELL_CATEGORY=" + std::string(record.category)};
    std::array<iovec, fields.size()> parts{};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        parts[i] = {fields[i].data(), fields[i].size()};
    }
    return sd_journal_sendv(parts.data(), static_cast<int>(parts.size())) == 0;
}

} // namespace tidewell
