#pragma once

#include "base/ports/Log.h"

#include <QString>

#include <mutex>

namespace tidewell {

/// Qt's own warnings go to the log while this lives; a fatal one calls `exit()` with status 1
/// instead of `abort()`. Qt says in several what keeps it from showing anything: until
/// `started()` only a fatal one is logged, as one line with the first warning before it. At most
/// one exists at a time; any thread may cause messages.
class QtMessages final {
public:
    explicit QtMessages(Log& log);
    QtMessages(const QtMessages&) = delete;
    QtMessages& operator=(const QtMessages&) = delete;
    ~QtMessages();

    /// The application object is there.
    void started();

private:
    void take(QtMsgType type, const QString& message);
    void log(const QString& message);

    Log& log_;
    std::mutex mutex_;
    bool isStarting_ = true;
    QString last_; // while starting, the first
};

} // namespace tidewell
