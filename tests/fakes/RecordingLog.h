#pragma once

#include "base/ports/Log.h"

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace tidewell {

/// Keeps what is logged, one text a line: "error general performWork(): message".
class RecordingLog final : public Log {
public:
    bool isEnabled(LogLevel) const override { return true; }

    void write(const LogRecord& record) override {
        const std::lock_guard lock(mutex_);
        lines_.push_back(std::string(record.level == LogLevel::error ? "error " : "info ") +
                         std::string(record.category) + " " + std::string(record.function) + ": " +
                         std::string(record.message));
    }

    /// What was logged since the last call.
    std::vector<std::string> takeLines() {
        const std::lock_guard lock(mutex_);
        return std::exchange(lines_, {});
    }

private:
    std::mutex mutex_;
    std::vector<std::string> lines_;
};

} // namespace tidewell
