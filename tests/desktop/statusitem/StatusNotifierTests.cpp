#include "desktop/statusitem/StatusNotifierStatusItem.h"
#include "tests/desktop/PrivateBus.h"

#include <QDBusVariant>

namespace tidewell {
namespace {

TEST(StatusMenu, DoesWhatWasClickedAndNothingElse) {
    PrivateBus bus;
    const QDBusConnection connection = bus.connect();
    const QDBusConnection desktop = bus.connect();
    std::vector<std::string> done;
    const ExportedStatusMenu menu(connection, {{"Open", [&done] { done.emplace_back("open"); }},
                                               {"Quit", [&done] { done.emplace_back("quit"); }}});
    for (const auto& type : {u"hovered"_s, u"clicked"_s}) {
        for (const int entry : {-1, 0, 3, 2, 1}) {
            auto event = QDBusMessage::createMethodCall(
                connection.baseService(), QString::fromLatin1(ExportedStatusMenu::path),
                u"com.canonical.dbusmenu"_s, u"Event"_s);
            answerTo(event << entry << type << QVariant::fromValue(QDBusVariant(0)) << 0U, desktop);
        }
    }
    EXPECT_THAT(done, testing::ElementsAre("quit", "open"));
}

TEST(StatusItemTexts, AreNoMarkupAndReserveRoomForOtherDigits) {
    EXPECT_EQ(plainTooltip("1 MB <of> 8 & GB"), u"1 MB of> 8  GB"_s);
    EXPECT_EQ(labelGuide("1.36 GB of 8 GB"), u"8.88 GB of 8 GB"_s);
    EXPECT_EQ(labelGuide("١٫٣٦ GB of ٨ GB"), u"٨٫٨٨ GB of ٨ GB"_s);
}

} // namespace
} // namespace tidewell
