#include "desktop/files/JournalLog.h"

#include <endian.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>

namespace tidewell {

namespace {

constexpr std::size_t longestText = 3000;

std::string entryText(const LogRecord& record) {
    std::string text;
    text.reserve(record.file.size() + record.function.size() + record.message.size() + 16);
    text.append(record.file).append(".").append(record.function).append("[");
    text.append(std::to_string(record.line)).append("]: ").append(record.message);
    text.resize(std::min(text.size(), longestText));
    return text;
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

/// A field in the journal's native protocol, in the form that any value may have.
void appendField(std::string& datagram, std::string_view name, std::string_view value) {
    const std::uint64_t length = htole64(value.size());
    datagram.append(name).append("\n");
    datagram.append(reinterpret_cast<const char*>(&length), sizeof length);
    datagram.append(value).append("\n");
}

/// One write of at most PIPE_BUF bytes: when poll() lets it, it is not blocked, and the lines of
/// two threads do not mix.
bool writeLine(int descriptor, std::string line) {
    line.resize(std::min<std::size_t>(line.size(), PIPE_BUF - 1));
    line += '\n';
    pollfd state{descriptor, POLLOUT, 0};
    return ::poll(&state, 1, 0) == 1 && state.revents == POLLOUT &&
           ::write(descriptor, line.data(), line.size()) >= 0;
}

} // namespace

JournalLog::JournalLog(std::string subsystem, LogLevel minimumLevel)
    : JournalLog(std::move(subsystem), minimumLevel, Sinks{}) {}

JournalLog::JournalLog(std::string subsystem, LogLevel minimumLevel, Sinks sinks)
    : subsystem_(std::move(subsystem))
    , minimumLevel_(minimumLevel)
    , sinks_(std::move(sinks))
    , socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {}

bool JournalLog::isEnabled(LogLevel level) const {
    return level >= minimumLevel_;
}

void JournalLog::write(const LogRecord& record) {
    if (const unsigned dropped = dropped_.exchange(0); dropped > 0) {
        const std::string message = "Log records that were dropped: " + std::to_string(dropped);
        if (!isTaken(
                {"general", "JournalLog.cpp", "write()", __LINE__, message, LogLevel::error})) {
            dropped_ += dropped + 1;
            return;
        }
    }
    if (!isTaken(record)) {
        ++dropped_;
    }
}

bool JournalLog::isTaken(const LogRecord& record) const {
    const std::string text = entryText(record);
    const Outcome outcome = sendToJournal(record, text);
    if (outcome != Outcome::absent) {
        return outcome == Outcome::taken;
    }
    std::string line(record.level == LogLevel::error ? "tidewell: error: " : "tidewell: info: ");
    line.append(record.category).append(": ").append(text);
    return writeLine(sinks_.errorDescriptor, onOneLine(line));
}

// Not by sd_journal_sendv(), which blocks as long as the socket's queue is full.
JournalLog::Outcome JournalLog::sendToJournal(const LogRecord& record,
                                              const std::string& text) const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    sinks_.journalSocket.native().copy(address.sun_path, sizeof address.sun_path - 1);
    std::string datagram;
    appendField(datagram, "MESSAGE", text);
    appendField(datagram, "PRIORITY",
                std::to_string(record.level == LogLevel::error ? LOG_ERR : LOG_INFO));
    appendField(datagram, "CODE_FILE", record.file);
    appendField(datagram, "CODE_FUNC", record.function);
    appendField(datagram, "CODE_LINE", std::to_string(record.line));
    appendField(datagram, "SYSLOG_IDENTIFIER", "tidewell");
    appendField(datagram, "TIDEWELL_SUBSYSTEM", subsystem_);
    appendField(datagram, "TIDEWELL_CATEGORY", record.category);
    if (::sendto(socket_.get(), datagram.data(), datagram.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
                 reinterpret_cast<const sockaddr*>(&address), sizeof address) >= 0) {
        return Outcome::taken;
    }
    return errno == EAGAIN || errno == ENOBUFS || errno == ENOMEM ? Outcome::full : Outcome::absent;
}

} // namespace tidewell
