#pragma once

#include <functional>
#include <utility>

namespace tidewell {

/// Keeps an observer connected: destroying or assigning over the subscription disconnects it.
/// Move-only. It may outlive what it observes.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> disconnect)
        : disconnect_(std::move(disconnect)) {}
    Subscription(Subscription&& other) noexcept
        : disconnect_(std::exchange(other.disconnect_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        std::swap(disconnect_, other.disconnect_);
        other.disconnect();
        return *this;
    }
    ~Subscription() { disconnect(); }

private:
    void disconnect() {
        if (const auto call = std::exchange(disconnect_, nullptr)) {
            call();
        }
    }

    std::function<void()> disconnect_;
};

} // namespace tidewell
