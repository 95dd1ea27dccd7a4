#include "platform/foundation/UUID.h"
#include "services/NotificationManager.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/Surroundings.h"

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
    const auto granted = "info" + asking + "Notification permission granted.";
    const auto denied = showing + "Notification authorization denied";
    const auto check = [this](const UserNotificationCenter::Authorization& authorization,
                              std::size_t requests, const std::vector<std::string>& lines) {
        center.authorization = authorization;
        center.requests.clear();
        show(std::nullopt);
        mainThread.drain();
        EXPECT_EQ(center.requests.size(), requests);
        EXPECT_EQ(log.takeLines(), lines);
    };
    check(true, 1, {granted});
    check(false, 0, {"error" + asking + "Notification permission denied.", denied});
    check(PlatformError{"no bus"}, 0,
          {"error" + asking + "Error requesting notification authorization: no bus", denied});
    center.deliveryError = PlatformError{"gone"};
    check(true, 1, {granted, showing + "Error showing notification: gone"});
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
