#include "desktop/statusitem/X11.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace tidewell::x11 {

namespace {

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply) {
    return {reply, &std::free};
}

/// Qt adds its own states to these when it maps the window.
void setStates(QWidget& window, std::initializer_list<const char*> names) {
    xcb_connection_t* const server = connection();
    if (server == nullptr) {
        return;
    }
    std::vector<xcb_atom_t> states;
    for (const char* name : names) {
        states.push_back(atom(server, name));
    }
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        atom(server, "_NET_WM_STATE"), XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(states.size()), states.data());
}

} // namespace

OwnConnection connect() {
    OwnConnection server(xcb_connect(nullptr, nullptr), &xcb_disconnect); // never null
    if (xcb_connection_has_error(server.get()) != 0) {
        server.reset();
    }
    return server;
}

xcb_connection_t* connection() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

xcb_atom_t atom(xcb_connection_t* connection, const std::string& name) {
    const auto request =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const auto reply = owned(xcb_intern_atom_reply(connection, request, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t selectionOwner(xcb_connection_t* connection, xcb_atom_t selection) {
    const auto request = xcb_get_selection_owner(connection, selection);
    const auto reply = owned(xcb_get_selection_owner_reply(connection, request, nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

std::vector<std::uint8_t> property(xcb_window_t window, xcb_atom_t name) {
    xcb_connection_t* const server = connection();
    if (server == nullptr || window == XCB_WINDOW_NONE) {
        return {};
    }
    constexpr std::uint32_t mostWords = 16384;
    const auto request =
        xcb_get_property(server, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, mostWords);
    const auto reply = owned(xcb_get_property_reply(server, request, nullptr));
    if (!reply) {
        return {};
    }
    const auto* const bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
    return {bytes, bytes + xcb_get_property_value_length(reply.get())};
}

int screenNumber() {
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen) == 0) {
        return 0;
    }
    std::free(host);
    return screen;
}

xcb_window_t rootWindow(xcb_connection_t* connection) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int number = screenNumber(); number > 0 && screens.rem > 1; --number) {
        xcb_screen_next(&screens);
    }
    return screens.data->root;
}

bool isXWayland() {
    xcb_connection_t* const server = connection();
    if (server == nullptr) {
        return false;
    }
    constexpr std::string_view extension = "XWAYLAND"; // from 23.1 on
    const auto reply = owned(xcb_query_extension_reply(
        server, xcb_query_extension(server, extension.size(), extension.data()), nullptr));
    // Older ones name their screens so.
    return (reply && reply->present != 0) ||
           QGuiApplication::primaryScreen()->name().startsWith(QLatin1String("XWAYLAND"));
}

bool hasFocus() {
    xcb_connection_t* const server = connection();
    if (server == nullptr) {
        return QGuiApplication::focusWindow() != nullptr;
    }
    const auto reply =
        owned(xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
    const QWindowList windows = QGuiApplication::allWindows();
    return reply && std::ranges::any_of(windows, [&reply](const QWindow* window) {
               return window->handle() != nullptr && window->winId() == reply->focus;
           });
}

bool isComposited() {
    xcb_connection_t* const server = connection();
    return server == nullptr ||
           selectionOwner(server, atom(server, "_NET_WM_CM_S" + std::to_string(screenNumber()))) !=
               XCB_WINDOW_NONE;
}

void leaveOutOfTaskBars(QWidget& window) {
    setStates(window, {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"});
}

void showOnAllWorkspaces(QWidget& window) {
    setStates(window,
              {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER", "_NET_WM_STATE_STICKY"});
}

void useActivationToken(QWidget& window) {
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    xcb_connection_t* const server = connection();
    if (server == nullptr || token.isEmpty()) {
        return; // Qt uses it on Wayland
    }
    qunsetenv("XDG_ACTIVATION_TOKEN");
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        atom(server, "_NET_STARTUP_ID"), atom(server, "UTF8_STRING"), 8,
                        static_cast<std::uint32_t>(token.size()), token.constData());
}

} // namespace tidewell::x11
