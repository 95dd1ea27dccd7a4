#include "platform/linux/StatusNotifierStatusItem.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/platform/linux/PrivateBus.h"
#include "tests/platform/linux/SignalReceiver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusReply>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

/// The desktop's list of status items.
struct Watcher {
    explicit Watcher(const QDBusConnection& bus)
        : service(bus, watcherName, watcherPath,
                  [this](const QDBusMessage& call, const QDBusConnection& connection) {
                      if (call.member() == QStringLiteral("Get")) {
                          if (!isSilent) {
                              connection.send(
                                  call.createReply(QVariant::fromValue(QDBusVariant(hasHost))));
                          }
                      } else if (refuses) {
                          connection.send(
                              call.createErrorReply(QDBusError::Failed, QStringLiteral("full")));
                      } else {
                          items.push_back(call.arguments().value(0).toString().toStdString());
                          connection.send(call.createReply());
                      }
                  }) {}

    void setHasHost(bool has) {
        hasHost = has;
        service.bus().send(
            QDBusMessage::createSignal(watcherPath, watcherName,
                                       has ? QStringLiteral("StatusNotifierHostRegistered")
                                           : QStringLiteral("StatusNotifierHostUnregistered")));
    }

    bool hasHost = true;
    bool isSilent = false;
    bool refuses = false;
    std::vector<std::string> items;
    FakeService service;
};

class StatusNotifier : public testing::Test {
protected:
    bool becomes(HostState state) {
        return comesTrue([&] { return host.state() == state; });
    }

    PrivateBus bus;
    QDBusConnection connection = bus.connect();
    RecordingLog log;
    StatusNotifierHost host{connection, log};
};

TEST_F(StatusNotifier, HostIsPresentWhenAWatcherSaysThatOneIsThereAndFollowsBoth) {
    EXPECT_EQ(host.state(), HostState::unknown);
    EXPECT_TRUE(becomes(HostState::absent));
    int absences = 0;
    const auto subscription =
        host.didChange([&] { absences += host.state() == HostState::absent ? 1 : 0; });
    {
        Watcher watcher(bus.connect());
        EXPECT_TRUE(becomes(HostState::present));
        watcher.setHasHost(false);
        EXPECT_TRUE(becomes(HostState::absent));
        watcher.setHasHost(true);
        EXPECT_TRUE(becomes(HostState::present));
        watcher.service.die();
        EXPECT_TRUE(becomes(HostState::absent));
    }
    Watcher hung(bus.connect());
    hung.isSilent = true;
    EXPECT_TRUE(becomes(HostState::unknown));
    EXPECT_EQ(absences, 2);
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

TEST_F(StatusNotifier, HostThatRefusesCountsAsAbsentUntilAnotherComes) {
    {
        Watcher watcher(bus.connect());
        watcher.refuses = true;
        EXPECT_TRUE(becomes(HostState::present));
        host.registerItem(QStringLiteral("org.kde.StatusNotifierItem-1-1"));
        EXPECT_TRUE(becomes(HostState::absent));
        EXPECT_THAT(log.takeLines(),
                    ElementsAre("error general registerItem(item:): Status item refused: "
                                "org.freedesktop.DBus.Error.Failed: full"));
    }
    Watcher another(bus.connect());
    EXPECT_TRUE(becomes(HostState::present));
    host.registerItem(QStringLiteral("org.kde.StatusNotifierItem-1-2"));
    EXPECT_TRUE(comesTrue([&] { return another.items.size() == 1; }));
}

TEST(StatusNotifierHost, IsAbsentWithoutABusAndAfterItsBusDied) {
    RecordingLog log;
    const StatusNotifierHost none(QDBusConnection(QStringLiteral("no such connection")), log);
    EXPECT_EQ(none.state(), HostState::absent);

    auto bus = std::make_unique<PrivateBus>();
    const QString name = QStringLiteral("survivor");
    {
        const Watcher watcher(bus->connect());
        const StatusNotifierHost host(QDBusConnection::connectToBus(bus->address(), name), log);
        EXPECT_TRUE(comesTrue([&] { return host.state() == HostState::present; }));
        bus.reset();
        EXPECT_TRUE(comesTrue([&] { return host.state() == HostState::absent; }));
    }
    QDBusConnection::disconnectFromBus(name);
}

/// A desktop that shows the item: asks as desktops do, over a connection of its own.
class StatusNotifierItem : public StatusNotifier {
protected:
    void SetUp() override {
        ASSERT_TRUE(becomes(HostState::present));
        item.setContent({"circle.fill", colours::systemGreen, "1 MB <of> 8 & GB"});
        ASSERT_TRUE(comesTrue([&] { return watcher.items.size() == 1; }));
        for (const auto& [path, interface] :
             {std::pair(StatusNotifierStatusItem::path, itemInterface),
              std::pair(ExportedStatusMenu::path, menuInterface)}) {
            QDBusConnection(desktop).connect(QString(), QLatin1String(path), interface, QString(),
                                             &receiver, SLOT(take(QDBusMessage)));
        }
    }

    QDBusMessage call(const char* path, const QString& interface, const char* member,
                      const QVariantList& arguments = {}) {
        auto message =
            QDBusMessage::createMethodCall(QString::fromStdString(watcher.items.back()),
                                           QLatin1String(path), interface, QLatin1String(member));
        message.setArguments(arguments);
        const QDBusPendingCall pending = desktop.asyncCall(message);
        EXPECT_TRUE(comesTrue([&] { return pending.isFinished(); }));
        return pending.reply();
    }

    QDBusMessage callItem(const char* member, const QVariantList& arguments = {}) {
        return call(StatusNotifierStatusItem::path, itemInterface, member, arguments);
    }

    QDBusMessage callMenu(const char* member, const QVariantList& arguments = {}) {
        return call(ExportedStatusMenu::path, menuInterface, member, arguments);
    }

    QVariant property(const char* name) {
        return call(StatusNotifierStatusItem::path,
                    QStringLiteral("org.freedesktop.DBus.Properties"), "Get",
                    {itemInterface, QLatin1String(name)})
            .arguments()
            .value(0)
            .value<QDBusVariant>()
            .variant();
    }

    /// The signals that have arrived since the last call.
    std::vector<std::string> takeSignals() {
        callItem("Scroll", {1, QStringLiteral("vertical")}); // its answer comes after them
        return std::exchange(receiver.members, {});
    }

    Watcher watcher{bus.connect()};
    QDBusConnection desktop = bus.connect();
    SignalReceiver receiver;
    std::vector<std::string> done;
    DesktopAppearance appearance{QDBusConnection(QStringLiteral("no such connection")), {}};
    StatusNotifierStatusItem item{
        connection, host, appearance,
        StatusItemBehaviour{"tidewell",
                            "Tide <&> well",
                            [this](const StatusItemActivation& activation) {
                                done.emplace_back(activation.click || activation.item ? "click"
                                                                                      : "open");
                            },
                            {{"Open a_b", [this] { done.emplace_back("menu open"); }},
                             {"Quit", [this] { done.emplace_back("menu quit"); }}}}};
};

TEST_F(StatusNotifierItem, HasThePropertiesThatDesktopsAskFor) {
    EXPECT_THAT(watcher.items.front(), HasSubstr("org.kde.StatusNotifierItem-"));
    EXPECT_EQ(property("Id"), QStringLiteral("tidewell"));
    EXPECT_EQ(property("Category"), QStringLiteral("SystemServices"));
    EXPECT_EQ(property("Status"), QStringLiteral("Active"));
    EXPECT_EQ(property("Title"), QStringLiteral("Tide <&> well"));
    EXPECT_EQ(property("IconName"), QString());
    EXPECT_EQ(property("AttentionIconName"), QString());
    EXPECT_EQ(property("ItemIsMenu"), QVariant(false));
    EXPECT_EQ(property("XAyatanaLabel"), QStringLiteral("1 MB <of> 8 & GB"));
    EXPECT_EQ(property("XAyatanaLabelGuide"), QStringLiteral("8 MB <of> 8 & GB"));
    EXPECT_EQ(property("Menu").value<QDBusObjectPath>().path(), QStringLiteral("/MenuBar"));

    const auto tooltip = property("ToolTip").value<QDBusArgument>();
    EXPECT_EQ(tooltip.currentSignature(), QStringLiteral("(sa(iiay)ss)"));
    QString iconName;
    QString title;
    QString text;
    tooltip.beginStructure();
    tooltip >> iconName;
    tooltip.beginArray();
    EXPECT_TRUE(tooltip.atEnd());
    tooltip.endArray();
    tooltip >> title >> text;
    tooltip.endStructure();
    EXPECT_EQ(iconName, QString());
    EXPECT_EQ(title, QStringLiteral("Tide > well"));
    EXPECT_EQ(text, QStringLiteral("1 MB of> 8  GB"));

    const auto pixmaps = property("IconPixmap").value<QDBusArgument>();
    EXPECT_EQ(pixmaps.currentSignature(), QStringLiteral("a(iiay)"));
    std::vector<int> sizes;
    pixmaps.beginArray();
    while (!pixmaps.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        pixmaps.beginStructure();
        pixmaps >> width >> height >> pixels;
        pixmaps.endStructure();
        EXPECT_EQ(width, height);
        ASSERT_EQ(pixels.size(), width * height * 4);
        // Alpha, red, green, blue of the pixel in the middle.
        EXPECT_EQ(pixels.mid((height / 2 * width + width / 2) * 4, 4).toHex(), "ff34c759");
        sizes.push_back(width);
    }
    pixmaps.endArray();
    EXPECT_THAT(sizes, ElementsAre(16, 22, 24, 32, 48, 64));
}

TEST_F(StatusNotifierItem, TellsOfChangesOnly) {
    EXPECT_THAT(takeSignals(), IsEmpty());
    item.setContent({"circle.fill", colours::systemGreen, "1 MB <of> 8 & GB"});
    EXPECT_THAT(takeSignals(), IsEmpty());
    item.setContent({"circle.fill", colours::systemGreen, "2 MB"});
    EXPECT_THAT(takeSignals(), ElementsAre("NewToolTip", "XAyatanaNewLabel"));
    item.setContent({"circle.fill", colours::systemRed, "2 MB"});
    EXPECT_THAT(takeSignals(), ElementsAre("NewIcon"));
    item.setContent({"circle.dotted", colours::systemRed, "2 MB"});
    EXPECT_THAT(takeSignals(), ElementsAre("NewIcon"));
}

TEST_F(StatusNotifierItem, IsActivatedAfterItHasAnswered) {
    EXPECT_EQ(callItem("Activate", {0, 0}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(callItem("SecondaryActivate", {5, 5}).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(comesTrue([&] { return done.size() == 2; }));
    EXPECT_THAT(done, ElementsAre("open", "open")) << "no pointer to trust without X";
}

TEST_F(StatusNotifierItem, OffersItsMenu) {
    const auto layout = callMenu("GetLayout", {0, -1, QStringList{QStringLiteral("label")}});
    EXPECT_EQ(layout.signature(), QStringLiteral("u(ia{sv}av)"));
    const auto root = layout.arguments().value(1).value<QDBusArgument>();
    int id = -1;
    QVariantMap properties;
    QVariantList children;
    root.beginStructure();
    root >> id >> properties >> children;
    root.endStructure();
    EXPECT_EQ(id, 0);
    ASSERT_EQ(children.size(), 2);
    const auto first = children.front().value<QDBusArgument>();
    first.beginStructure();
    first >> id >> properties;
    first.endStructure();
    EXPECT_EQ(id, 1);
    EXPECT_EQ(properties, (QVariantMap{{QStringLiteral("label"), QStringLiteral("Open a__b")}}));

    const auto group =
        callMenu("GetGroupProperties", {QVariant::fromValue(QList<int>{0, 2, 7}), QStringList()});
    EXPECT_EQ(group.signature(), QStringLiteral("a(ia{sv})"));
    const auto label = callMenu("GetProperty", {2, QStringLiteral("label")});
    EXPECT_EQ(label.arguments().value(0).value<QDBusVariant>().variant(), QStringLiteral("Quit"));

    const auto event = [&](int entry, const char* type) {
        return callMenu("Event",
                        {entry, QLatin1String(type), QVariant::fromValue(QDBusVariant(0)), 0U});
    };
    for (const int entry : {-1, 0, 3}) {
        event(entry, "clicked");
    }
    event(1, "hovered");
    event(2, "clicked");
    event(1, "clicked");
    EXPECT_TRUE(comesTrue([&] { return done.size() == 2; }));
    EXPECT_THAT(done, ElementsAre("menu quit", "menu open"));
    EXPECT_EQ(callMenu("AboutToShow", {0}).arguments().value(0), QVariant(false));
    EXPECT_EQ(callMenu("AboutToShowGroup", {QVariant::fromValue(QList<int>{0, 9})}).signature(),
              QStringLiteral("aiai"));
}

TEST(StatusItemTexts, ReserveRoomForOtherDigits) {
    EXPECT_EQ(labelGuide("1.36 GB of 8 GB"), QStringLiteral("8.88 GB of 8 GB"));
    EXPECT_EQ(labelGuide("١٫٣٦ GB of ٨ GB"), QStringLiteral("٨٫٨٨ GB of ٨ GB"));
}

TEST_F(StatusNotifier, ItemLeavesTheDesktopWithItsName) {
    Watcher watcher(bus.connect());
    ASSERT_TRUE(becomes(HostState::present));
    DesktopAppearance appearance(QDBusConnection(QStringLiteral("no such connection")), {});
    const auto isOwned = [&] {
        return connection.interface()
            ->isServiceRegistered(QString::fromStdString(watcher.items.back()))
            .value();
    };
    {
        StatusNotifierStatusItem item(connection, host, appearance, {});
        item.setContent({"circle", colours::primary, "a"});
        ASSERT_TRUE(comesTrue([&] { return watcher.items.size() == 1; }));
        EXPECT_TRUE(isOwned());
    }
    EXPECT_FALSE(isOwned());
}

} // namespace
} // namespace tidewell
