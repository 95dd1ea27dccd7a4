#pragma once

#include "base/ports/Log.h"

#include <filesystem>
#include <string>

namespace tidewell {

/// The system's log. Each record becomes one entry of the journal with the text
/// "file.function[line]: message", its parts in fields of their own, and the fields
/// TIDEWELL_SUBSYSTEM and TIDEWELL_CATEGORY. Where there is no journal it becomes one line on the
/// standard error stream, with control characters written out. Any thread.
class JournalLog final : public Log {
public:
    /// Where the journal listens, and where lines go without it. The descriptor is not closed.
    struct Sinks {
        std::filesystem::path journalSocket = "/run/systemd/journal/socket";
        int errorDescriptor = 2;
    };

    /// `subsystem` is the identifier of the program's bundle. Records below `minimumLevel` are not
    /// even put together. The socket's presence decides for each record; the journal's library
    /// itself knows only the usual place.
    explicit JournalLog(std::string subsystem, LogLevel minimumLevel = LogLevel::info);
    JournalLog(std::string subsystem, LogLevel minimumLevel, Sinks sinks);

    bool isEnabled(LogLevel level) const override;
    void write(const LogRecord& record) override;

private:
    bool writeToJournal(const LogRecord& record, const std::string& text) const;

    const std::string subsystem_;
    const LogLevel minimumLevel_;
    const Sinks sinks_;
};

} // namespace tidewell
