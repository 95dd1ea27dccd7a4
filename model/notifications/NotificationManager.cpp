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
    auto answer = answerOf<Result<bool>>([self](std::function<void(Result<bool>)> take) {
        self->center_.requestAuthorization(
            AuthorizationOptions::alert | AuthorizationOptions::sound | AuthorizationOptions::badge,
            std::move(take));
    });
    const Result<bool> permitted = co_await answer;

    constexpr auto function = "requestPermission()";
    if (!permitted) {
        logError(self->log_,
                 "Error requesting notification authorization: " + permitted.error().description(),
                 function);
        co_return false;
    }
    if (!*permitted) {
        logError(self->log_, "Notification permission denied.", function);
        co_return false;
    }
    logInfo(self->log_, "Notification permission granted.", function);
    co_return true;
}

Task<void> NotificationManager::show(Self self, std::string title,
                                     std::optional<std::string> subtitle, std::string body) {
    constexpr auto function = "show(title:subtitle:body:)";
    const bool permitted = co_await requestPermission(self);
    if (!permitted) {
        logError(self->log_, "Notification authorization denied", function);
        co_return;
    }

    const NotificationRequest request{UUID::random().text(), std::move(title), std::move(subtitle),
                                      std::move(body), deliveryDelay};
    auto answer = answerOf<Result<>>([self, request](std::function<void(Result<>)> take) {
        self->center_.add(request, std::move(take));
    });
    const Result<> shown = co_await answer;
    if (!shown) {
        logError(self->log_, "Error showing notification: " + shown.error().description(),
                 function);
    }
}

} // namespace tidewell
