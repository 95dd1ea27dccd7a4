#pragma once

#include "base/ports/UserNotificationCenter.h"
#include "base/runtime/Executor.h"

#include <utility>
#include <vector>

namespace tidewell {

/// A desktop that shows nothing and answers, later on the main thread, what the test wants.
class FakeNotificationCenter final : public UserNotificationCenter {
public:
    explicit FakeNotificationCenter(Executor& mainThread)
        : mainThread_(mainThread) {}

    void requestAuthorization(AuthorizationOptions options,
                              std::function<void(Authorization)> answer) override {
        requestedOptions.push_back(options);
        mainThread_.post([answer = std::move(answer), given = authorization] { answer(given); });
    }

    void add(NotificationRequest request,
             std::function<void(std::optional<PlatformError>)> answer) override {
        requests.push_back(std::move(request));
        mainThread_.post([answer = std::move(answer), given = deliveryError] { answer(given); });
    }

    Authorization authorization = true;
    std::optional<PlatformError> deliveryError;
    std::vector<AuthorizationOptions> requestedOptions;
    std::vector<NotificationRequest> requests;

private:
    Executor& mainThread_;
};

} // namespace tidewell
