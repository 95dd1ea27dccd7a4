#include "model/notifications/NotificationManager.h"

#include "base/runtime/Waiting.h"
#include "base/values/UUID.h"

#include <utility>

namespace tidewell {

namespace {

constexpr std::chrono::duration<double> deliveryDelay{1.0};

} // namespace

Task<bool> NotificationManager::requestPermission() {
    return requestPermission(shared_from_this());
}

Task<void> NotificationManager::show(std::string title, std::optional<std::string> subtitle,
                                     std::string body) {
    return show(shared_from_this(), std::move(title), std::move(subtitle), std::move(body));
}

Task<bool> NotificationManager::requestPermission(Self self) {
    using Authorization = UserNotificationCenter::Authorization;
    auto answer = answerOf<Authorization>([self](std::function<void(Authorization)> take) {
        self->center_.requestAuthorization(
            AuthorizationOptions::alert | AuthorizationOptions::sound | AuthorizationOptions::badge,
            std::move(take));
    });
    const Authorization authorization = co_await answer;

    constexpr auto function = "requestPermission()";
    if (const auto* error = std::get_if<PlatformError>(&authorization)) {
        logMessage(self->log_, "Error requesting notification authorization: " + error->description,
                   "general", __FILE__, function, __LINE__, LogLevel::error);
        co_return false;
    }
    if (!std::get<bool>(authorization)) {
        logMessage(self->log_, "Notification permission denied.", "general", __FILE__, function,
                   __LINE__, LogLevel::error);
        co_return false;
    }
    logMessage(self->log_, "Notification permission granted.", "general", __FILE__, function,
               __LINE__, LogLevel::info);
    co_return true;
}

Task<void> NotificationManager::show(Self self, std::string title,
                                     std::optional<std::string> subtitle, std::string body) {
    constexpr auto function = "show(title:subtitle:body:)";
    const bool permitted = co_await requestPermission(self);
    if (!permitted) {
        logMessage(self->log_, "Notification authorization denied", "general", __FILE__, function,
                   __LINE__, LogLevel::error);
        co_return;
    }

    const NotificationRequest request{UUID::random().text(), std::move(title), std::move(subtitle),
                                      std::move(body), deliveryDelay};
    using Outcome = std::optional<PlatformError>;
    auto answer = answerOf<Outcome>([self, request](std::function<void(Outcome)> take) {
        self->center_.add(request, std::move(take));
    });
    const Outcome error = co_await answer;
    if (error) {
        logMessage(self->log_, "Error showing notification: " + error->description, "general",
                   __FILE__, function, __LINE__, LogLevel::error);
    }
}

} // namespace tidewell
