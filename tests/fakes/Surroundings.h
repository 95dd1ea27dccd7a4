#pragma once

#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/RecordingLog.h"

#include <gtest/gtest.h>

namespace tidewell {

/// What most of the program stands on, in the hands of the test. One thread.
class Surroundings : public testing::Test {
protected:
    /// Does all the work that is due.
    void settle() {
        while (mainThread.drain() + worker.drain() > 0) {
        }
    }
    void pass(double seconds) {
        clock.advance(seconds);
        settle();
    }
    /// What still waits lets go of the test's objects while all of them are there.
    void TearDown() override { clock.dropAlarms(); }

    MemoryUserDefaults defaults;
    RecordingLog log;
    ManualExecutor mainThread;
    ManualExecutor worker;
    ManualClock clock;
};

} // namespace tidewell
