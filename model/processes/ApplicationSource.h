#pragma once

#include "base/runtime/Task.h"
#include "base/values/ThemeIcon.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidewell {

using ProcessIdentifier = std::int32_t;

struct RunningApplication {
    ProcessIdentifier processIdentifier = 0;
    std::optional<std::string> localizedName; ///< UTF-8, for the user to read
    std::optional<ThemeIcon> icon;            ///< the same object at every survey, if it can be
};

using ApplicationList = std::shared_ptr<const std::vector<RunningApplication>>;

/// What runs on the machine on behalf of the logged-in user, and how much memory it takes.
/// Must outlive the tasks that it made.
class ApplicationSource {
public:
    ApplicationSource() = default;
    ApplicationSource(const ApplicationSource&) = delete;
    ApplicationSource& operator=(const ApplicationSource&) = delete;
    virtual ~ApplicationSource() = default;

    /// Everything that runs, in the platform's order. A task of the main thread, which it leaves
    /// free while it finds out names and icons; cancelling it does not interrupt that. What cannot
    /// be read is left out.
    virtual Task<ApplicationList> runningApplications() = 0;

    /// Bytes of memory that a process of the last list has resident: now, or as of that list where
    /// asking takes time. Empty when it has ended or cannot be inspected. Main thread.
    virtual std::optional<std::uint64_t> residentMemory(ProcessIdentifier process) = 0;
};

} // namespace tidewell
