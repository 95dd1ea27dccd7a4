#pragma once

#include "platform/runtime/Waiting.h"
#include "processes/ApplicationSource.h"

#include <map>

namespace tidewell {

/// Applications that the test sets. They are listed by way of an executor, if there is one.
class FakeApplicationSource final : public ApplicationSource {
public:
    Task<ApplicationList> runningApplications() override {
        ++surveys;
        if (worker != nullptr) {
            auto work = runOn(*worker, [] {});
            co_await work;
        }
        co_return std::make_shared<const std::vector<RunningApplication>>(applications);
    }

    std::optional<std::uint64_t> residentMemory(ProcessIdentifier process) override {
        const auto found = memory.find(process);
        return found == memory.end() ? std::nullopt : std::optional(found->second);
    }

    std::vector<RunningApplication> applications;
    std::map<ProcessIdentifier, std::uint64_t> memory; ///< what is missing cannot be read
    Executor* worker = nullptr;
    int surveys = 0;
};

} // namespace tidewell
