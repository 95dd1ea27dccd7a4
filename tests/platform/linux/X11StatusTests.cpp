#include "platform/linux/SystemTrayHost.h"
#include "platform/linux/TrayIconStatusItem.h"
#include "platform/linux/X11.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QProcess>
#include <QTest>

#include <cstdlib>
#include <memory>

namespace tidewell {
namespace {

using testing::ElementsAre;

bool comesTrue(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 20000);
}

/// An old-style tray: a window of another program that holds the selection.
class Tray {
public:
    Tray()
        : server_(xcb_connect(nullptr, nullptr))
        , window_(xcb_generate_id(server_)) {
        const auto* const screen = xcb_setup_roots_iterator(xcb_get_setup(server_)).data;
        xcb_create_window(server_, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, 24, 24, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const xcb_atom_t selection = x11::atom(server_, "_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(server_, window_, selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t announcement{};
        announcement.response_type = XCB_CLIENT_MESSAGE;
        announcement.format = 32;
        announcement.window = screen->root;
        announcement.type = x11::atom(server_, "MANAGER");
        announcement.data.data32[1] = selection;
        announcement.data.data32[2] = window_;
        xcb_send_event(server_, 0, screen->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&announcement));
        xcb_flush(server_);
    }
    Tray(const Tray&) = delete;
    Tray& operator=(const Tray&) = delete;
    ~Tray() { xcb_disconnect(server_); }

    /// Whether a program has asked to be embedded since the last call.
    bool wasAskedToEmbed() const {
        const xcb_atom_t request = x11::atom(server_, "_NET_SYSTEM_TRAY_OPCODE");
        while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{
            xcb_poll_for_event(server_), &std::free}) {
            const auto* const message =
                reinterpret_cast<const xcb_client_message_event_t*>(event.get());
            if ((event->response_type & 0x7fU) == XCB_CLIENT_MESSAGE && message->type == request &&
                message->data.data32[1] == 0) {
                return true;
            }
        }
        return false;
    }

private:
    xcb_connection_t* server_;
    xcb_window_t window_;
};

TEST(SystemTrayHost, FollowsTheTraysThatComeAndGo) {
    const Tray* first = new Tray;
    SystemTrayHost host;
    EXPECT_EQ(host.state(), HostState::present) << "there before";
    std::vector<HostState> told;
    const auto subscription = host.didChange([&] { told.push_back(host.state()); });
    const auto second = std::make_unique<Tray>(); // takes the selection over
    EXPECT_TRUE(comesTrue([&] { return told.size() == 2; }));
    delete first; // which nobody misses
    auto third = std::make_unique<Tray>();
    EXPECT_TRUE(comesTrue([&] { return told.size() == 4; }));
    third.reset();
    EXPECT_TRUE(comesTrue([&] { return told.size() == 5; }));
    EXPECT_THAT(told, ElementsAre(HostState::absent, HostState::present, HostState::absent,
                                  HostState::present, HostState::absent));
}

TEST(TrayIconStatusItem, IsEmbeddedInTheTrayAndAgainInTheNextOne) {
    DesktopAppearance appearance(QDBusConnection(QStringLiteral("no such connection")), {});
    TrayIconStatusItem item(appearance, {});
    auto tray = std::make_unique<Tray>();
    item.setContent({"circle.fill", colours::systemRed, "a"});
    EXPECT_TRUE(comesTrue([&] { return tray->wasAskedToEmbed(); }));
    tray.reset();
    tray = std::make_unique<Tray>();
    EXPECT_TRUE(comesTrue([&] { return tray->wasAskedToEmbed(); }));
}

} // namespace
} // namespace tidewell

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // A display of the test's own, and no bus: the toolkit must not find a desktop there.
    QProcess server;
    server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server.start(QStringLiteral("Xvfb"),
                 {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                  QStringLiteral("tcp"), QStringLiteral("-noreset")});
    QByteArray number;
    while (!number.endsWith('\n') && server.waitForReadyRead(20000)) {
        number += server.readAll();
    }
    if (number.isEmpty()) {
        return EXIT_FAILURE;
    }
    qputenv("DISPLAY", ":" + number.trimmed());
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    qputenv("QT_QPA_PLATFORM", "xcb");
    int result = EXIT_FAILURE;
    {
        const QApplication application(argc, argv);
        result = RUN_ALL_TESTS();
    }
    server.kill();
    server.waitForFinished();
    return result;
}
