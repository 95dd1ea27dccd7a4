#include "base/observable/ObservableObject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tidewell {
namespace {

using testing::ElementsAre;

struct Model final : ObservableObject {
    Published<int> count{*this, 1};
    Published<std::string> name{*this};
};

TEST(Published, TellsBeforeEveryAssignmentAndEveryChangeInPlace) {
    Model model;
    std::vector<int> seen;
    const auto subscription = model.objectWillChange(
        [&] { seen.push_back(model.count.get() + static_cast<int>(model.name.get().size())); });
    model.count = 2;
    model.count = 2; // unchanged, told all the same
    model.name.mutate([](auto& name) { name += "abc"; });
    EXPECT_THAT(seen, ElementsAre(1, 2, 2));
    EXPECT_EQ(model.name.get(), "abc");
}

TEST(ObserverList, StandsObserversThatComeAndGoWhileTheyAreTold) {
    ObserverList<int> list;
    std::vector<std::string> told;
    Subscription second;
    Subscription third;
    Subscription first = list.add([&](int) {
        told.emplace_back("first");
        second = Subscription(); // not told any more
        third = list.add([&](int) { told.emplace_back("third"); });
        first = Subscription(); // itself, while it runs
    });
    second = list.add([&](int) { told.emplace_back("second"); });
    list.tell(1);
    EXPECT_THAT(told, ElementsAre("first"));
    list.tell(2);
    EXPECT_THAT(told, ElementsAre("first", "third"));
}

TEST(ObserverList, LetsGoOfAnObserverThatHoldsAnotherAndMayBeDestroyedByOne) {
    auto list = std::make_unique<ObserverList<>>();
    int told = 0;
    auto held = std::make_shared<Subscription>();
    Subscription holder = list->add([held] {});
    *held = list->add([&told] { told += 1; });
    const Subscription destroyer = list->add([&] {
        told += 10;
        list.reset();
    });
    held.reset();
    holder = Subscription();
    list->tell();
    EXPECT_EQ(told, 10);
}

} // namespace
} // namespace tidewell
