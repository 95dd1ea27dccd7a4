#pragma once

#include "base/observable/ObservableObject.h"
#include "base/ports/Log.h"
#include "base/ports/UserNotificationCenter.h"
#include "base/runtime/Task.h"

#include <memory>
#include <optional>
#include <string>

namespace tidewell {

/// The program's only way to the desktop's notifications. Keeps no state: every answer comes fresh
/// from the desktop, and nothing is ever published.
///
/// Owned by a `std::shared_ptr`; its operations keep it alive until they end. Main thread: they
/// are awaited in tasks of the main thread, may overlap, and never throw. Cancelling such a task
/// changes nothing. When the centre is destroyed before it answered, the task that waits for it is
/// destroyed where it waits.
class NotificationManager final : public ObservableObject,
                                  public std::enable_shared_from_this<NotificationManager> {
public:
    /// Both must outlive the manager.
    NotificationManager(UserNotificationCenter& center, Log& log)
        : center_(center)
        , log_(log) {}

    /// Whether the user lets the program notify; also false when that could not be found out.
    Task<bool> requestPermission();

    /// Asks for permission, then posts one notification, which appears a second later. A refusal
    /// or a failure is logged and that is all.
    Task<void> show(std::string title, std::optional<std::string> subtitle, std::string body);

private:
    using Self = std::shared_ptr<NotificationManager>;
    static Task<bool> requestPermission(Self self);
    static Task<void> show(Self self, std::string title, std::optional<std::string> subtitle,
                           std::string body);

    UserNotificationCenter& center_;
    Log& log_;
};

} // namespace tidewell
