#pragma once

#include "base/ports/Log.h"
#include "base/values/FileDescriptor.h"

#include <atomic>
#include <filesystem>
#include <string>

namespace tidewell {

/// The system's log. Each record becomes one entry of the journal with the text
/// "file.function[line]: message", its parts in fields of their own, and the fields
/// TIDEWELL_SUBSYSTEM and TIDEWELL_CATEGORY. Where there is no journal it becomes one line on the
/// standard error stream, with control characters escaped. Any thread.
///
/// Never waits: a record that the journal, or the reader of the stream, does not take at once is
/// dropped, and the number of those is logged before the next record that is taken. Texts beyond
/// some thousand bytes are cut. SIGPIPE must be ignored.
class JournalLog final : public Log {
public:
    /// Where the journal listens, and where lines go without it. The descriptor is not closed.
    struct Sinks {
        std::filesystem::path journalSocket = "/run/systemd/journal/socket";
        int errorDescriptor = 2;
    };

    /// `subsystem` is the identifier of the program's bundle. Records below `minimumLevel` are not
    /// even put together. The socket's presence decides for each record.
    explicit JournalLog(std::string subsystem, LogLevel minimumLevel = LogLevel::info);
    JournalLog(std::string subsystem, LogLevel minimumLevel, Sinks sinks);

    bool isEnabled(LogLevel level) const override;
    void write(const LogRecord& record) override;

private:
    enum class Outcome { taken, full, absent };

    bool isTaken(const LogRecord& record) const;
    Outcome sendToJournal(const LogRecord& record, const std::string& text) const;

    const std::string subsystem_;
    const LogLevel minimumLevel_;
    const Sinks sinks_;
    const FileDescriptor socket_;
    std::atomic<unsigned> dropped_ = 0;
};

} // namespace tidewell
