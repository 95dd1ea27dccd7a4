#include "platform/observable/ObservableObject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tidewell {
namespace {

class Model final : public ObservableObject {
public:
    int count() const { return count_.get(); }
    void setCount(int count) { count_ = count; }
    void addName(const std::string& name) {
        names_.mutate([&name](auto& names) { names.push_back(name); });
    }
    std::size_t names() const { return names_.get().size(); }

private:
    Published<int> count_{*this, 1};
    Published<std::vector<std::string>> names_{*this};
};

TEST(Published, TellsBeforeEveryAssignmentAndEveryChangeInPlace) {
    Model model;
    std::vector<std::pair<int, std::size_t>> seen;
    auto subscription =
        model.objectWillChange([&] { seen.emplace_back(model.count(), model.names()); });
    model.setCount(2);
    model.setCount(2); // unchanged, told all the same
    model.addName("a");
    EXPECT_THAT(seen, testing::ElementsAre(testing::Pair(1, 0U), testing::Pair(2, 0U),
                                           testing::Pair(2, 0U)));
    EXPECT_EQ(model.names(), 1U);
    subscription = Subscription();
    model.setCount(3);
    EXPECT_EQ(seen.size(), 3U);
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
    EXPECT_THAT(told, testing::ElementsAre("first"));
    list.tell(2);
    EXPECT_THAT(told, testing::ElementsAre("first", "third"));
}

TEST(ObserverList, LetsGoOfAnObserverThatHoldsSubscriptionsToIt) {
    ObserverList<> list;
    int told = 0;
    auto held = std::make_shared<std::vector<Subscription>>();
    Subscription holder = list.add([held] {});
    for (int i = 0; i < 3; ++i) {
        held->push_back(list.add([&told] { ++told; }));
    }
    const Subscription last = list.add([&told] { told += 10; });
    held.reset();
    holder = Subscription();
    list.tell();
    EXPECT_EQ(told, 10);
}

TEST(ObserverList, MayBeDestroyedByAnObserverAndOutlivedByASubscription) {
    auto list = std::make_unique<ObserverList<>>();
    int told = 0;
    const Subscription destroyer = list->add([&] {
        ++told;
        list.reset();
    });
    const Subscription other = list->add([&] { ++told; });
    list->tell();
    EXPECT_GE(told, 1);
    EXPECT_EQ(list, nullptr);
}

} // namespace
} // namespace tidewell
