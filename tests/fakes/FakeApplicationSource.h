#pragma once

#include "base/runtime/Waiting.h"
#include "model/processes/ApplicationSource.h"

namespace tidewell {

/// Applications that the test sets, listed by way of an executor.
struct FakeApplicationSource final : ApplicationSource {
    explicit FakeApplicationSource(Executor& executor)
        : worker(executor) {}
    Task<ApplicationList> runningApplications() override {
        ++surveys;
        auto work = runOn(worker, [] {});
        co_await work;
        co_return applications;
    }
    void rest() override { ++rests; }

    Executor& worker;
    ApplicationList applications = {};
    int surveys = 0;
    int rests = 0;
};

} // namespace tidewell
