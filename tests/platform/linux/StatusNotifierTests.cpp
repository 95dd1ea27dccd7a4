#include "platform/linux/StatusNotifierStatusItem.h"
#include "tests/platform/linux/PrivateBus.h"

#include <QDBusConnectionInterface>

namespace tidewell {
namespace {

using testing::ElementsAre;

/// Remembers the names of the signals that it is connected to.
class Receiver final : public QObject {
    Q_OBJECT

public:
    std::vector<std::string> members;
    Q_SLOT void take(const QDBusMessage& signal) {
        members.push_back(signal.member().toStdString());
    }
};

class StatusNotifier : public BusTest {
protected:
    QDBusConnection connection = bus.connect();
    QDBusConnection desktop = bus.connect();
};

TEST_F(StatusNotifier, ItemTellsOfChangesOnlyAndLeavesWithItsName) {
    StatusNotifierHost host(connection, log);
    DesktopAppearance appearance(noBus, {});
    StatusItemContent content{"circle.fill", colours::systemGreen, "1 MB"};
    std::optional<StatusNotifierStatusItem> item;
    item.emplace(connection, host, appearance, StatusItemBehaviour{"tidewell", "Tidewell", {}, {}});
    item->setContent(content);
    const auto items = [this] {
        const QStringList names = connection.interface()->registeredServiceNames();
        return names.filter(u"org.kde.StatusNotifierItem-"_s);
    };
    const QString service = items().value(0);

    const QString interface = u"org.kde.StatusNotifierItem"_s;
    const auto path = QString::fromLatin1(StatusNotifierStatusItem::path);
    Receiver receiver;
    desktop.connect({}, path, interface, {}, &receiver, SLOT(take(QDBusMessage)));
    const auto signalsOf = [&](const StatusItemContent& next) {
        item->setContent(next);
        auto scroll = QDBusMessage::createMethodCall(service, path, interface, u"Scroll"_s);
        answerTo(scroll << 1 << u"vertical"_s, desktop); // comes after them
        return std::exchange(receiver.members, {});
    };
    EXPECT_THAT(signalsOf(content), ElementsAre());
    content.text = "2 MB";
    EXPECT_THAT(signalsOf(content), ElementsAre("NewToolTip", "XAyatanaNewLabel"));
    content.symbolName = "circle.dotted";
    EXPECT_THAT(signalsOf(content), ElementsAre("NewIcon"));
    item.reset();
    EXPECT_TRUE(items().isEmpty()) << "it stays on the desktop";
}

TEST_F(StatusNotifier, MenuDoesWhatWasClickedAndNothingElse) {
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
    EXPECT_THAT(done, ElementsAre("quit", "open"));
}

TEST(StatusItemTexts, AreNoMarkupAndReserveRoomForOtherDigits) {
    EXPECT_EQ(plainTooltip("1 MB <of> 8 & GB"), u"1 MB of> 8  GB"_s);
    EXPECT_EQ(labelGuide("1.36 GB of 8 GB"), u"8.88 GB of 8 GB"_s);
    EXPECT_EQ(labelGuide("١٫٣٦ GB of ٨ GB"), u"٨٫٨٨ GB of ٨ GB"_s);
}

} // namespace
} // namespace tidewell

#include "StatusNotifierTests.moc"
