#include "platform/linux/StatusItemSwitcher.h"
#include "tests/fakes/ManualClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FakeHost final : public StatusHost {
public:
    HostState state() const override { return state_; }
    void become(HostState state) {
        state_ = state;
        tellObservers();
    }

private:
    HostState state_ = HostState::absent;
};

class StatusItemSwitcherTest : public testing::Test {
protected:
    /// Notes when it comes, what it is given and when it goes.
    class Item final : public StatusItem {
    public:
        Item(StatusItemSwitcherTest& test, std::string form)
            : test_(test)
            , form_(std::move(form)) {
            EXPECT_EQ(++test_.alive, 1) << "two items at once";
        }
        ~Item() override {
            --test_.alive;
            test_.notes.push_back(form_ + " gone");
        }
        void setContent(const StatusItemContent& content) override {
            test_.notes.push_back(form_ + " " + content.text);
        }

    private:
        StatusItemSwitcherTest& test_;
        std::string form_;
    };

    StatusItemForms::Maker maker(const char* form) {
        return [this, form] { return std::make_unique<Item>(*this, form); };
    }

    std::vector<std::string> takeNotes() { return std::exchange(notes, {}); }

    int alive = 0;
    std::vector<std::string> notes;
    ManualClock clock;
    FakeHost notifier;
    FakeHost tray;
    StatusItemSwitcher switcher{
        clock, notifier, tray, {maker("notifier"), maker("tray"), maker("label")}};
};

TEST_F(StatusItemSwitcherTest, TakesADesktopThatDrawsItemsAtOnceAndTheOthersAfterAGrace) {
    switcher.setContent({.symbolName = {}, .text = "a"});
    clock.advance(1.4); // at login: nothing flashes up
    EXPECT_THAT(takeNotes(), IsEmpty());
    tray.become(HostState::present); // a panel starts: first its tray, then the rest
    clock.advance(1.4);
    EXPECT_THAT(takeNotes(), IsEmpty());
    notifier.become(HostState::unknown);
    notifier.become(HostState::present);
    EXPECT_THAT(takeNotes(), ElementsAre("notifier a"));
    switcher.setContent({.symbolName = {}, .text = "a"});
    EXPECT_THAT(takeNotes(), IsEmpty()) << "unchanged";
    switcher.setContent({.symbolName = {}, .text = "b"});
    EXPECT_THAT(takeNotes(), ElementsAre("notifier b"));
    EXPECT_EQ(clock.pendingAlarms(), 0U);
}

TEST_F(StatusItemSwitcherTest, FallsBackStepByStepAndComesBackWithTheHosts) {
    switcher.setContent({.symbolName = {}, .text = "a"});
    clock.advance(1.5);
    EXPECT_THAT(takeNotes(), ElementsAre("label a"));
    tray.become(HostState::present);
    EXPECT_THAT(takeNotes(), IsEmpty());
    clock.advance(1.5);
    EXPECT_THAT(takeNotes(), ElementsAre("label gone", "tray a"));
    notifier.become(HostState::present);
    EXPECT_THAT(takeNotes(), ElementsAre("tray gone", "notifier a"));
    tray.become(HostState::absent);
    notifier.become(HostState::absent);
    clock.advance(1.5);
    EXPECT_THAT(takeNotes(), ElementsAre("notifier gone", "label a"));
}

TEST_F(StatusItemSwitcherTest, RegistersAnewAfterEveryRestartWithoutShowingAnotherForm) {
    notifier.become(HostState::present);
    switcher.setContent({.symbolName = {}, .text = "a"});
    EXPECT_THAT(takeNotes(), ElementsAre("notifier a"));
    notifier.become(HostState::absent);
    clock.advance(1);
    notifier.become(HostState::unknown);
    clock.advance(1);
    notifier.become(HostState::present);
    EXPECT_THAT(takeNotes(), ElementsAre("notifier gone", "notifier a"));
    clock.advance(60);
    EXPECT_THAT(takeNotes(), IsEmpty());
}

TEST_F(StatusItemSwitcherTest, TakesTheWindowWhileADesktopHangsThoughThereIsATray) {
    notifier.become(HostState::unknown);
    tray.become(HostState::present);
    switcher.setContent({.symbolName = {}, .text = "a"});
    clock.advance(1.5);
    EXPECT_THAT(takeNotes(), ElementsAre("label a"));
    notifier.become(HostState::absent);
    clock.advance(1.5);
    EXPECT_THAT(takeNotes(), ElementsAre("label gone", "tray a"));
}

TEST_F(StatusItemSwitcherTest, ShowsNothingBeforeThereIsSomethingToShow) {
    clock.advance(1.5);
    notifier.become(HostState::present);
    EXPECT_THAT(takeNotes(), IsEmpty());
    switcher.setContent({.symbolName = {}, .text = "a"});
    EXPECT_THAT(takeNotes(), ElementsAre("notifier a"));
}

} // namespace
} // namespace tidewell
