#pragma once

#include "base/values/Interface.h"
#include "base/values/Result.h"

namespace tidewell {

/// Whether this program starts when the user logs in (autostart). Main thread; both may write a
/// small file.
class LoginItem : public Interface {
public:
    [[nodiscard]] virtual Result<> registerApplication() = 0;
    /// Successful, too, where the program was not registered.
    [[nodiscard]] virtual Result<> unregisterApplication() = 0;
};

} // namespace tidewell
