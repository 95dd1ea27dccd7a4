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
                              std::function<void(Result<bool>)> answer) override {
        requestedOptions.push_back(options);
        mainThread_.post([answer = std::move(answer), given = authorization] { answer(given); });
    }

    void add(NotificationRequest request, std::function<void(Result<>)> answer) override {
        requests.push_back(std::move(request));
        mainThread_.post([answer = std::move(answer), given = delivery] { answer(given); });
    }

    Result<bool> authorization = true;
    Result<> delivery;
    std::vector<AuthorizationOptions> requestedOptions;
    std::vector<NotificationRequest> requests;

private:
    Executor& mainThread_;
};

} // namespace tidewell
