#pragma once

#include "base/values/Result.h"

namespace tidewell {

/// The registration of this program with the programs that start when the user logs in. Main
/// thread; both may write a small file, and say why they failed.
class LoginItem {
public:
    LoginItem() = default;
    LoginItem(const LoginItem&) = delete;
    LoginItem& operator=(const LoginItem&) = delete;
    virtual ~LoginItem() = default;

    [[nodiscard]] virtual Result<> registerApplication() = 0;
    /// Successful, too, where the program was not registered.
    [[nodiscard]] virtual Result<> unregisterApplication() = 0;
};

} // namespace tidewell
