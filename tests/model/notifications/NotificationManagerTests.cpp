#include "base/values/UUID.h"
#include "model/notifications/NotificationManager.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/Surroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::ElementsAre;

class NotificationManagerTest : public Surroundings {
protected:
    void show(std::optional<std::string> subtitle) {
        spawn(mainThread, manager->show("Title", std::move(subtitle), "Body"));
    }

    FakeNotificationCenter center{mainThread};
    std::shared_ptr<NotificationManager> manager =
        std::make_shared<NotificationManager>(center, log);
};

TEST_F(NotificationManagerTest, LogsWhyNothingIsShown) {
    const std::string showing = "error general show(title:subtitle:body:): ";
    using Case = std::pair<Result<bool>, std::string>;
    for (const auto& [answer, reason] :
         {Case{false, "Notification permission denied."},
          Case{failure("no bus"), "Error requesting notification authorization: no bus"}}) {
        center.authorization = answer;
        show(std::nullopt);
        mainThread.drain();
        EXPECT_THAT(log.takeLines(), ElementsAre("error general requestPermission(): " + reason,
                                                 showing + "Notification authorization denied"));
    }
    EXPECT_EQ(center.requests.size(), 0U);
    center.authorization = true;
    center.delivery = failure("gone");
    show(std::nullopt);
    mainThread.drain();
    EXPECT_THAT(log.takeLines(),
                ElementsAre(testing::_, showing + "Error showing notification: gone"));
}

TEST_F(NotificationManagerTest, GivesEachNotificationANewIdentityAndLivesUntilTheLastIsPosted) {
    show("Subtitle");
    show(std::nullopt);
    const std::weak_ptr<NotificationManager> watched = std::exchange(manager, nullptr);
    EXPECT_FALSE(watched.expired());
    mainThread.drain();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(static_cast<unsigned>(center.requestedOptions.front()), 7U);
    ASSERT_EQ(center.requests.size(), 2U);
    const auto& first = center.requests[0];
    EXPECT_EQ(first.title + first.subtitle.value() + first.body, "TitleSubtitleBody");
    EXPECT_EQ(first.delay.count(), 1.0);
    EXPECT_EQ(UUID::parse(first.identifier).value().text(), first.identifier);
    EXPECT_EQ(center.requests[1].subtitle, std::nullopt) << "unset, not empty";
    EXPECT_NE(first.identifier, center.requests[1].identifier);
}

} // namespace
} // namespace tidewell
