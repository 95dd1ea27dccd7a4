#include "desktop/display/LayerShell.h"
#include "desktop/display/QtPlatform.h"
#include "desktop/display/WaylandCompositor.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <thread>
#include <wayland-server.h>

namespace tidewell {
namespace {

using namespace std::chrono_literals;

TEST(QtPlatform, IsOneThatPutsThePanelBesideItsItem) {
    const auto expect = [](Displays displays, const QByteArray& platform) {
        EXPECT_EQ(qtPlatform(displays), platform);
    };
    expect({.x11 = true, .layerShell = false, .wanted = {}}, "xcb;wayland");
    expect({.x11 = true, .layerShell = true, .wanted = {}}, "wayland;xcb");
    expect({.x11 = false, .layerShell = true, .wanted = {}}, "wayland");
    expect({.x11 = false, .layerShell = false, .wanted = {}}, {});
    expect({.x11 = true, .layerShell = true, .wanted = "offscreen"}, "offscreen");
}

TEST(LayerShell, AnchorsWindowsToTheirNearestCorner) {
    using layershell::anchors;
    static constexpr QRect screen(1280, 200, 1280, 900);
    const auto expectAt = [](QRect window, Qt::Edges edges, QMargins margins) {
        EXPECT_EQ(anchors(window, screen), (layershell::Anchors{edges, margins}));
    };
    expectAt({2206, 204, 350, 760}, Qt::RightEdge | Qt::TopEdge, {0, 4, 4, 0});
    expectAt({1300, 336, 350, 760}, Qt::LeftEdge | Qt::BottomEdge, {20, 0, 0, 4});
    expectAt({1280, 200, 1280, 900}, Qt::RightEdge | Qt::TopEdge, {});
}

/// A Wayland server with a layer shell, in a folder of its own.
class Compositor {
public:
    Compositor() {
        EXPECT_EQ(wl_display_add_socket(display_, "wayland-7"), 0);
        wl_global_create(display_, &layerShell_, 4, nullptr, [](auto...) {});
    }
    ~Compositor() {
        thread_ = {};
        wl_display_destroy_clients(display_);
        wl_display_destroy(display_);
    }

    void run() {
        thread_ = std::jthread([this](const std::stop_token& stop) {
            while (!stop.stop_requested()) {
                wl_event_loop_dispatch(wl_display_get_event_loop(display_), 20);
                wl_display_flush_clients(display_);
            }
        });
    }

private:
    TemporaryFolder folder_;
    ScopedEnvironment environment_{
        {{"XDG_RUNTIME_DIR", folder_.path().string()}, {"WAYLAND_DISPLAY", "wayland-7"}}};
    wl_interface layerShell_{"zwlr_layer_shell_v1", 4, 0, nullptr, 0, nullptr};
    wl_display* display_ = wl_display_create();
    std::jthread thread_;
};

TEST(WaylandCompositor, TellsWhatItOffersUnlessItIsGoneOrHangs) {
    Compositor compositor;
    EXPECT_FALSE(compositorOffers("zwlr_layer_shell_v1", 20ms)) << "it hangs";
    compositor.run();
    EXPECT_TRUE(compositorOffers("zwlr_layer_shell_v1", 20s));
    EXPECT_FALSE(compositorOffers("xdg_wm_base", 20s));
    for (const char* name : {"wayland-8", "", "/nowhere"}) {
        const ScopedEnvironment other{{{"WAYLAND_DISPLAY", std::string(name)}}};
        EXPECT_FALSE(compositorOffers("zwlr_layer_shell_v1", 20s)) << name;
    }
}

} // namespace
} // namespace tidewell
