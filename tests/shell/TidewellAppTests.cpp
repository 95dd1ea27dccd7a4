#include "shell/TidewellApp.h"

#include "tests/fakes/FakeApplicationSource.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/Surroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::Contains;
using testing::HasSubstr;

/// A status item that passes on what it is told.
struct Item final : public StatusItem {
    explicit Item(StatusItemContent& place)
        : shown(place) {}
    void setContent(const StatusItemContent& content) override { shown = content; }

    StatusItemContent& shown;
};

struct NoLoginItem final : public LoginItem {
    std::optional<PlatformError> registerApplication() override { return std::nullopt; }
    std::optional<PlatformError> unregisterApplication() override { return std::nullopt; }
};

class Application : public Surroundings {
protected:
    FakeProbes probes;
    FakeNotificationCenter notifications{mainThread};
    FakeApplicationSource applications;
    NoLoginItem loginItem;
    Bundle bundle{{{"CFBundleName", "Tidewell"}}};
    DesktopAppearance appearance{QDBusConnection(QStringLiteral("none")), QString()};
    StatusItemContent shown;
    TidewellApp app{{
        .watcher = {.probes = probes,
                    .defaults = defaults,
                    .mainThread = mainThread,
                    .schedulerThread = worker,
                    .clock = clock,
                    .log = log,
                    .secondsSince1970 = [] { return 1000.0; }},
        .notificationCenter = notifications,
        .bundle = bundle,
        .appearance = appearance,
        .makeStatusItem = [this](const auto&) { return std::make_unique<Item>(shown); },
        .makeUpdater = nullptr,
        .applications = applications,
        .loginItem = loginItem,
        .openNotificationSettings = [] { return true; },
        .openUrl = [](const QUrl&) {},
        .animationsAreWanted = [] { return false; },
    }};
};

TEST_F(Application, SamplesFromTheLabelsAppearanceOnAndSavesWithThePanelNeverOpened) {
    clock.advance(5);
    settle();
    EXPECT_TRUE(log.takeLines().empty()) << "nothing runs before the label appears";

    app.start();
    settle();
    EXPECT_THAT(log.takeLines(), Contains(HasSubstr("No data available yet...")));
    EXPECT_EQ(shown.text, "No Swap");

    probes.swap = SwapUsage{.total = 4096, .used = 1024, .free = 3072};
    pass(60);
    EXPECT_EQ(shown.text, "1 KB of 4 KB");
    EXPECT_EQ(shown.colour, colours::systemGreen);
    EXPECT_EQ(notifications.requests.size(), 1U);

    EXPECT_EQ(defaults.dataForKey("_dataContainer"), std::nullopt);
    app.historySaving().willTerminate();
    EXPECT_NE(defaults.dataForKey("_dataContainer"), std::nullopt);
}

} // namespace
} // namespace tidewell
