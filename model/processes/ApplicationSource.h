#pragma once

#include "base/runtime/Task.h"
#include "base/values/Interface.h"
#include "base/values/ThemeIcon.h"
#include "model/processes/ApplicationUsage.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidewell {

struct RunningApplication {
    std::optional<std::string> localizedName; ///< UTF-8, for the user to read
    std::optional<ThemeIcon> icon;            ///< the same object at every survey, if it can be
    std::optional<std::uint64_t> memory;      ///< bytes; empty when it ended or is not to be read
    std::shared_ptr<const ApplicationUsage> usage =
        nullptr; ///< null where the platform tells no more
};

using ApplicationList = std::vector<RunningApplication>;

/// What runs on the machine on behalf of the logged-in user, and how much memory it takes.
/// Must outlive the tasks that it made.
class ApplicationSource : public Interface {
public:
    /// Every application that runs, in the platform's order. A task of the main thread, which it
    /// leaves free meanwhile; cancelling it does not interrupt that.
    virtual Task<ApplicationList> runningApplications() = 0;

    /// Nobody looks any more: forgets what it kept from one list to the next. Main thread.
    virtual void rest() = 0;
};

} // namespace tidewell
