#pragma once

#include "base/values/PlatformError.h"

#include <optional>

namespace tidewell {

/// The registration of this program with the programs that start when the user logs in. Main
/// thread; both may write a small file, and say why they failed.
class LoginItem {
public:
    LoginItem() = default;
    LoginItem(const LoginItem&) = delete;
    LoginItem& operator=(const LoginItem&) = delete;
    virtual ~LoginItem() = default;

    [[nodiscard]] virtual std::optional<PlatformError> registerApplication() = 0;
    /// Successful, too, where the program was not registered.
    [[nodiscard]] virtual std::optional<PlatformError> unregisterApplication() = 0;
};

} // namespace tidewell
