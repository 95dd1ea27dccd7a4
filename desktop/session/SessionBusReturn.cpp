#include "desktop/session/SessionBusReturn.h"

#include "desktop/session/UsableBuses.h"

#include <algorithm>

namespace tidewell {

namespace {

using namespace std::chrono_literals;

} // namespace

SessionBusReturn::SessionBusReturn(QDBusConnection sessionBus, bool isMissing,
                                   std::function<void()> returned, Log& log)
    : returned_(std::move(returned))
    , log_(log) {
    nextLook_.setSingleShot(true);
    nextLook_.callOnTimeout(this, &SessionBusReturn::look);
    // libdbus itself sends this signal, to the connection that it is about.
    sessionBus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                       QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                       this, SLOT(lost()));
    if (isMissing) {
        nextLook_.start(1s);
    }
}

void SessionBusReturn::lost() {
    logError(log_, "The session bus is gone: going on without it until there is one again.",
             "lost()");
    nextLook_.start(1s);
}

void SessionBusReturn::look() {
    if (sessionBusAnswers()) {
        returned_();
    } else {
        nextLook_.start(
            std::min<std::chrono::milliseconds>(nextLook_.intervalAsDuration() * 2, 1min));
    }
}

} // namespace tidewell
