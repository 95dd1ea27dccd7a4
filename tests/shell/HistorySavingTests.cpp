#include "shell/HistorySaving.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(HistorySaving, SavesOnceForEachWayOut) {
    int saves = 0;
    HistorySaving quitting([&saves] { ++saves; });
    quitting.willTerminate();
    quitting.willTerminate();
    EXPECT_EQ(saves, 1);

    saves = 0;
    HistorySaving poweringOff([&saves] { ++saves; });
    poweringOff.willPowerOff();
    poweringOff.willTerminate();
    EXPECT_EQ(saves, 1) << "the machine's power-off ends the program, too";

    saves = 0;
    HistorySaving calledOff([&saves] { ++saves; });
    calledOff.willPowerOff();
    calledOff.powerOffWasCancelled();
    calledOff.willTerminate();
    EXPECT_EQ(saves, 2) << "what was sampled since the cancelled power-off must not be lost";
}

} // namespace
} // namespace tidewell
