#pragma once

#include "base/ports/Log.h"

#include <QString>

#include <functional>
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

    /// Calls `lost` when Qt says that the Wayland compositor is gone, on whichever thread that is,
    /// never on two at a time. What Qt does there next is to call `_exit()` or, on desktops that
    /// ask for it, to connect anew. An empty function ends it, and waits for a call under way.
    void onCompositorLost(std::function<void()> lost);

private:
    void take(QtMsgType type, const QString& message);
    void log(const QString& message);

    Log& log_;
    std::mutex mutex_;
    bool isStarting_ = true;
    QString last_; // while starting, the first
    std::mutex lossMutex_;
    std::function<void()> compositorLost_; // under the mutex
};

} // namespace tidewell
