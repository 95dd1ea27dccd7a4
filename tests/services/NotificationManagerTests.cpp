#include "platform/foundation/UUID.h"
#include "services/NotificationManager.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/RecordingLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::ElementsAre;

Task<void> ask(std::shared_ptr<NotificationManager> manager, std::optional<bool>* answer) {
    const bool permitted = co_await manager->requestPermission();
    *answer = permitted;
}

class NotificationManagerTest : public testing::Test {
protected:
    void show(std::optional<std::string> subtitle) {
        spawn(mainThread, manager->show("Title", std::move(subtitle), "Body"));
        mainThread.drain();
    }

    ManualExecutor mainThread;
    FakeNotificationCenter center{mainThread};
    RecordingLog log;
    std::shared_ptr<NotificationManager> manager =
        std::make_shared<NotificationManager>(center, log);
};

TEST_F(NotificationManagerTest, AnswersAndLogsWhatTheDesktopPermits) {
    const auto* const granted =
        "info general requestPermission(): Notification permission granted.";
    const auto* const denied = "error general requestPermission(): Notification permission denied.";
    const auto* const failed =
        "error general requestPermission(): Error requesting notification authorization: no bus";
    using Authorization = UserNotificationCenter::Authorization;
    for (const auto& [given, permitted, line] : {std::tuple{Authorization(true), true, granted},
                                                 {Authorization(false), false, denied},
                                                 {PlatformError{"no bus"}, false, failed}}) {
        center.authorization = given;
        std::optional<bool> answer;
        spawn(mainThread, ask(manager, &answer));
        mainThread.drain();
        EXPECT_EQ(answer, permitted);
        EXPECT_THAT(log.takeLines(), ElementsAre(line));
    }
    EXPECT_EQ(static_cast<unsigned>(center.requestedOptions.front()), 7U);
}

TEST_F(NotificationManagerTest, PostsEachNotificationUnderANewIdentityASecondLater) {
    show("Subtitle");
    show(std::nullopt);
    ASSERT_EQ(center.requests.size(), 2U);
    const auto& first = center.requests[0];
    EXPECT_EQ(first.title, "Title");
    EXPECT_EQ(first.subtitle, "Subtitle");
    EXPECT_EQ(first.body, "Body");
    EXPECT_EQ(first.delay.count(), 1.0);
    EXPECT_EQ(UUID::parse(first.identifier).value().text(), first.identifier);
    EXPECT_EQ(center.requests[1].subtitle, std::nullopt) << "unset, not empty";
    EXPECT_NE(first.identifier, center.requests[1].identifier);
    EXPECT_EQ(log.takeLines().size(), 2U) << "one line each: permission granted";
}

TEST_F(NotificationManagerTest, PostsNothingWithoutPermissionAndLogsWhatFails) {
    center.authorization = false;
    show(std::nullopt);
    EXPECT_TRUE(center.requests.empty());
    EXPECT_THAT(
        log.takeLines(),
        ElementsAre("error general requestPermission(): Notification permission denied.",
                    "error general show(title:subtitle:body:): Notification authorization denied"));

    center.authorization = true;
    center.deliveryError = PlatformError{"gone"};
    show(std::nullopt);
    EXPECT_EQ(log.takeLines().back(),
              "error general show(title:subtitle:body:): Error showing notification: gone");
}

TEST_F(NotificationManagerTest, LivesUntilItsLastNotificationIsHandedOver) {
    const std::weak_ptr<NotificationManager> watched = manager;
    spawn(mainThread, manager->show("Title", std::nullopt, "Body"));
    manager.reset();
    EXPECT_FALSE(watched.expired());
    mainThread.drain();
    EXPECT_EQ(center.requests.size(), 1U);
    EXPECT_TRUE(watched.expired());
}

} // namespace
} // namespace tidewell
