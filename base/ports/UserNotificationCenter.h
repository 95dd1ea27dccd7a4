#pragma once

#include "base/values/Interface.h"
#include "base/values/Result.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace tidewell {

/// What a program may ask permission for.
enum class AuthorizationOptions : unsigned { badge = 1, sound = 2, alert = 4 };
constexpr AuthorizationOptions operator|(AuthorizationOptions a, AuthorizationOptions b) {
    return static_cast<AuthorizationOptions>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}

/// One notification, shown once, `delay` after it was added, with the default sound.
struct NotificationRequest {
    std::string identifier; ///< unique: notifications never replace each other
    std::string title;
    std::optional<std::string> subtitle;
    std::string body;
    std::chrono::duration<double> delay;
};

/// The desktop's notifications. Main thread; nothing here blocks. The answers come later on the
/// main thread, exactly once, within a bounded time even where a service hangs.
class UserNotificationCenter : public Interface {
public:
    /// Answers whether the user lets this program notify, or why that could not be found out.
    virtual void requestAuthorization(AuthorizationOptions options,
                                      std::function<void(Result<bool>)> answer) = 0;

    /// Answers once the notification was handed to the desktop, or why it was not.
    virtual void add(NotificationRequest request, std::function<void(Result<>)> answer) = 0;
};

} // namespace tidewell
