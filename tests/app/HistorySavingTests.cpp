#include "app/HistorySaving.h"
#include "model/preferences/StoredPreferences.h"
#include "tests/fakes/WatcherSurroundings.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

class HistorySavingTest : public WatcherSurroundings {
protected:
    bool isRescued() {
        return saving.rescue([this](const DataContainer&) {
            EXPECT_TRUE(saving.isSaving()) << "else the program may be ended midway";
            EXPECT_FALSE(saving.rescue([](const DataContainer&) {})) << "there is one copy";
        });
    }

    HistorySaving saving{*watcher, mainThread};
};

TEST_F(HistorySavingTest, IsDoneOnceOnWhateverThread) {
    saving.saveOnce();
    EXPECT_FALSE(isRescued()) << "nothing is loaded";
    watcher->startPeriodicTask();
    settle();
    EXPECT_TRUE(isRescued());
    EXPECT_FALSE(saving.isSaving());
    EXPECT_FALSE(isRescued());
    saving.saveOnce();
    EXPECT_FALSE(defaults.value(preferences::dataContainer.key));

    saving.goOn();
    saving.saveOnce();
    EXPECT_TRUE(defaults.value(preferences::dataContainer.key));
    EXPECT_FALSE(isRescued());
}

} // namespace
} // namespace tidewell
