#include "platform/foundation/UUID.h"
#include "services/NotificationManager.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/Surroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

class NotificationManagerTest : public Surroundings {
protected:
    void show(std::optional<std::string> subtitle) {
        spawn(mainThread, manager->show("Title", std::move(subtitle), "Body"));
    }

    FakeNotificationCenter center{mainThread};
    std::shared_ptr<NotificationManager> manager =
        std::make_shared<NotificationManager>(center, log);
};

TEST_F(NotificationManagerTest, PostsWhatTheDesktopPermitsAndLogsWhatBecameOfIt) {
    const std::string asking = " general requestPermission(): ";
    const std::string showing = "error general show(title:subtitle:body:): ";
    const auto denied = showing + "Notification authorization denied";
    const auto linesWith = [this](const UserNotificationCenter::Authorization& authorization) {
        center.authorization = authorization;
        show(std::nullopt);
        mainThread.drain();
        return log.takeLines();
    };
    using testing::ElementsAre;
    EXPECT_THAT(linesWith(false),
                ElementsAre("error" + asking + "Notification permission denied.", denied));
    EXPECT_THAT(
        linesWith(PlatformError{"no bus"}),
        ElementsAre("error" + asking + "Error requesting notification authorization: no bus",
                    denied));
    EXPECT_EQ(center.requests.size(), 0U);
    center.deliveryError = PlatformError{"gone"};
    EXPECT_THAT(linesWith(true), ElementsAre("info" + asking + "Notification permission granted.",
                                             showing + "Error showing notification: gone"));
    EXPECT_EQ(static_cast<unsigned>(center.requestedOptions.front()), 7U);
}

TEST_F(NotificationManagerTest, GivesEachNotificationANewIdentityAndLivesUntilTheLastIsPosted) {
    show("Subtitle");
    show(std::nullopt);
    const std::weak_ptr<NotificationManager> watched = std::exchange(manager, nullptr);
    EXPECT_FALSE(watched.expired());
    mainThread.drain();
    EXPECT_TRUE(watched.expired());
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
