#include "desktop/statusitem/StatusNotifierStatusItem.h"
#include "tests/desktop/PrivateBus.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusVariant>

namespace tidewell {
namespace {

/// The item as a host sees it, on a Plasma desktop at scale 1.
class StatusNotifier : public BusTest {
protected:
    QVariant ask(const QString& path, const QString& interface, const QString& method,
                 const QVariantList& arguments) {
        auto call =
            QDBusMessage::createMethodCall(connection.baseService(), path, interface, method);
        call.setArguments(arguments);
        return answerTo(call, host).arguments().value(0);
    }
    void tell(const QString& method, const QVariantList& arguments) {
        ask(itemPath, u"org.kde.StatusNotifierItem"_s, method, arguments);
    }
    QVariant property(const QString& name) {
        const QVariant answer = ask(itemPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
                                    {u"org.kde.StatusNotifierItem"_s, name});
        return answer.value<QDBusVariant>().variant();
    }

    const QString itemPath = QString::fromLatin1(StatusNotifierStatusItem::path);
    const QDBusConnection connection = bus.connect();
    const QDBusConnection host = bus.connect();
    std::vector<std::string> done;
    QByteArray token; // at the last activation
    StatusItemPlace place{{{}, HostCoordinates::native}, [] {
                              return std::vector{ScreenArea{{0, 0, 1280, 900}, {0, 0, 1280, 856}}};
                          }};
    LocalSettings local{{}};
    DesktopAppearance appearance{noBus, {}, local};
    StatusNotifierHost notifierHost{connection, log};
    StatusNotifierStatusItem item{connection,
                                  notifierHost,
                                  appearance,
                                  place,
                                  {.identifier = "tidewell",
                                   .title = "Tidewell",
                                   .activated =
                                       [this] {
                                           done.emplace_back("activated");
                                           token = qgetenv("XDG_ACTIVATION_TOKEN");
                                       },
                                   .menu = {{"Open", [this] { done.emplace_back("open"); }},
                                            {"Quit", [this] { done.emplace_back("quit"); }}}}};
};

TEST_F(StatusNotifier, DoesWhatWasClickedInItsMenuAndNothingElse) {
    for (const auto& type : {u"hovered"_s, u"clicked"_s}) {
        for (const int entry : {-1, 0, 3, 2, 1}) {
            ask(QString::fromLatin1(ExportedStatusMenu::path), u"com.canonical.dbusmenu"_s,
                u"Event"_s, {entry, type, QVariant::fromValue(QDBusVariant(0)), 0U});
        }
    }
    EXPECT_THAT(done, testing::ElementsAre("quit", "open"));
}

TEST_F(StatusNotifier, TellsTheFigureInTheTooltipsTitleAndToScreenReaders) {
    item.setContent({.symbolName = "circle.fill", .text = {}, .description = "1 MB <of> 8 & GB"});
    const auto tooltip = property(u"ToolTip"_s).value<QDBusArgument>();
    QString iconName;
    QString title;
    QString text;
    tooltip.beginStructure();
    tooltip >> iconName;
    tooltip.beginArray();
    tooltip.endArray();
    tooltip >> title >> text;
    tooltip.endStructure(); // what is not read to its end leaks
    EXPECT_EQ(title, u"1 MB of> 8  GB"_s) << "no markup";
    EXPECT_EQ(property(u"IconAccessibleDesc"_s), u"1 MB <of> 8 & GB"_s);
    EXPECT_EQ(labelGuide(u"1.36 GB of 8 GB"_s), u"8.88 GB of 8 GB"_s);
    EXPECT_EQ(labelGuide(u"١٫٣٦ GB of ٨ GB"_s), u"٨٫٨٨ GB of ٨ GB"_s);
}

TEST_F(StatusNotifier, OpensAtThePlaceThatTheHostTellsByAnyButton) {
    const auto expectAt = [this](const std::optional<QPoint>& centre) {
        EXPECT_EQ(std::exchange(done, {}).size(), 1U);
        EXPECT_EQ(place.lastKnown().has_value(), centre.has_value());
        EXPECT_EQ(place.lastKnown().value_or(QRect()).center(), centre.value_or(QRect().center()));
    };
    tell(u"XAyatanaSecondaryActivate"_s, {0U});
    expectAt({});
    tell(u"ProvideXdgActivationToken"_s, {u"token"_s});
    tell(u"Activate"_s, {900, 880});
    expectAt(QPoint(900, 880));
    EXPECT_EQ(token, "token");
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "none that is stale";
    tell(u"SecondaryActivate"_s, {1000, 880});
    expectAt(QPoint(1000, 880));
    tell(u"XAyatanaSecondaryActivate"_s, {0U});
    expectAt(QPoint(1000, 880));
}

TEST_F(StatusNotifier, OpensOneMenuForRepeatedCalls) {
    tell(u"ContextMenu"_s, {900, 880});
    QWidget* const menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    tell(u"ContextMenu"_s, {900, 880});
    EXPECT_EQ(QApplication::activePopupWidget(), menu);
    menu->close();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(done.empty());
}

} // namespace
} // namespace tidewell
