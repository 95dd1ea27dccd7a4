#include "desktop/statusitem/StatusItemSwitcher.h"
#include "tests/fakes/ManualClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::ElementsAre;

struct FakeHost final : public StatusHost {
    HostState state() const override { return current; }
    void become(HostState state) {
        current = state;
        tellObservers();
    }

    HostState current = HostState::absent;
};

/// Notes what it is given and when it goes.
struct Item final : public StatusItem {
    Item(std::vector<std::string>& log, std::string name)
        : notes(log)
        , form(std::move(name)) {}
    ~Item() override { notes.push_back(form + " gone"); }
    void setContent(const StatusItemContent& content) override {
        notes.push_back(form + " " + content.text);
    }

    std::vector<std::string>& notes;
    std::string form;
};

class Switcher : public testing::Test {
protected:
    StatusItemForm form(const char* name, std::shared_ptr<StatusHost> host, bool isForgotten) {
        return {std::move(host), [this, name] { return std::make_unique<Item>(notes, name); },
                isForgotten};
    }
    void show(const char* text) {
        switcher.setContent({.symbolName = {}, .text = text, .description = {}});
    }
    std::vector<std::string> notesAfter(double seconds) {
        clock.advance(seconds);
        return std::exchange(notes, {});
    }

    std::vector<std::string> notes;
    ManualClock clock;
    std::shared_ptr<FakeHost> notifier = std::make_shared<FakeHost>();
    std::shared_ptr<FakeHost> tray = std::make_shared<FakeHost>();
    StatusItemSwitcher switcher{clock,
                                {form("notifier", notifier, true), form("tray", tray, false),
                                 form("label", nullptr, false)}};
};

TEST_F(Switcher, TakesADesktopThatDrawsItemsAtOnceAndTheOthersAfterAGrace) {
    show("a");
    EXPECT_THAT(notesAfter(1.4), ElementsAre()) << "at login nothing flashes up";
    tray->become(HostState::present); // a panel starts: first its tray, then the rest
    EXPECT_THAT(notesAfter(1.4), ElementsAre());
    notifier->become(HostState::unknown);
    notifier->become(HostState::present);
    EXPECT_THAT(notesAfter(0), ElementsAre("notifier a"));
    show("a");
    EXPECT_THAT(notesAfter(0), ElementsAre()) << "unchanged";
    show("b");
    EXPECT_THAT(notesAfter(0), ElementsAre("notifier b"));
    EXPECT_EQ(clock.pendingAlarms(), 0U);
}

TEST_F(Switcher, FallsBackStepByStepAndComesBackWithTheHosts) {
    EXPECT_THAT(notesAfter(1.5), ElementsAre()) << "nothing to show yet";
    show("a");
    EXPECT_THAT(notesAfter(0), ElementsAre("label a"));
    tray->become(HostState::present);
    EXPECT_THAT(notesAfter(1.5), ElementsAre("label gone", "tray a"));
    notifier->become(HostState::unknown); // a desktop that hangs would hang the tray icon, too
    EXPECT_THAT(notesAfter(1.5), ElementsAre("tray gone", "label a"));
    notifier->become(HostState::present);
    EXPECT_THAT(notesAfter(0), ElementsAre("label gone", "notifier a"));
    notifier->become(HostState::absent); // it restarts
    EXPECT_THAT(notesAfter(1.4), ElementsAre());
    notifier->become(HostState::present);
    EXPECT_THAT(notesAfter(60), ElementsAre("notifier gone", "notifier a")) << "registers anew";
}

} // namespace
} // namespace tidewell
