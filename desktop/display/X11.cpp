#include "desktop/display/X11.h"

#include "base/values/FileDescriptor.h"

#include <QGuiApplication>
#include <QPoint>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tidewell::x11 {

namespace {

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply) {
    return {reply, &std::free};
}

OwnConnection connectWithoutLimit() {
    OwnConnection server(xcb_connect(nullptr, nullptr), &xcb_disconnect); // never null
    if (xcb_connection_has_error(server.get()) != 0) {
        server.reset();
    }
    return server;
}

} // namespace

// xcb_connect() cannot be interrupted, so a process of its own tries first: a thread that tried
// would stay, and its memory with it. The child stays connected until the program is: a server may
// end or start anew when its last client leaves.
OwnConnection connect(std::chrono::milliseconds patience) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return connectWithoutLimit();
    }
    const FileDescriptor read(ends[0]);
    FileDescriptor write(ends[1]);
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const OwnConnection server = connectWithoutLimit();
        write.close();
        pause();
        _exit(EXIT_SUCCESS);
    }
    write.close();
    pollfd end{.fd = read.get(), .events = POLLIN, .revents = 0};
    const bool answers = child < 0 || poll(&end, 1, static_cast<int>(patience.count())) > 0;
    OwnConnection server =
        answers ? connectWithoutLimit() : OwnConnection(nullptr, &xcb_disconnect);
    if (child > 0) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    return server;
}

xcb_connection_t* connection() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

xcb_atom_t atom(const std::string& name) {
    xcb_connection_t* const server = connection();
    const auto request =
        xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const auto reply = owned(xcb_intern_atom_reply(server, request, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t selectionOwner(xcb_atom_t selection) {
    xcb_connection_t* const server = connection();
    const auto request = xcb_get_selection_owner(server, selection);
    const auto reply = owned(xcb_get_selection_owner_reply(server, request, nullptr));
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

xcb_window_t rootWindow() {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection()));
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

std::optional<QPoint> middle(xcb_window_t window) {
    xcb_connection_t* const server = connection();
    const auto size =
        owned(xcb_get_geometry_reply(server, xcb_get_geometry(server, window), nullptr));
    if (!size) {
        return std::nullopt;
    }
    const auto request = xcb_translate_coordinates(server, window, size->root,
                                                   static_cast<std::int16_t>(size->width / 2),
                                                   static_cast<std::int16_t>(size->height / 2));
    const auto place = owned(xcb_translate_coordinates_reply(server, request, nullptr));
    return place ? std::optional(QPoint(place->dst_x, place->dst_y)) : std::nullopt;
}

bool isOurs(xcb_window_t window) {
    return std::ranges::any_of(QGuiApplication::allWindows(), [window](const QWindow* ours) {
        return ours->handle() != nullptr && ours->winId() == window;
    });
}

void selectProperties(xcb_window_t window, bool isOn) {
    if (window == XCB_WINDOW_NONE) {
        return;
    }
    const std::uint32_t mask = isOn ? std::uint32_t{XCB_EVENT_MASK_PROPERTY_CHANGE} : 0U;
    const auto request =
        xcb_change_window_attributes_checked(connection(), window, XCB_CW_EVENT_MASK, &mask);
    xcb_discard_reply(connection(), request.sequence); // Qt would log an error
}

bool hasFocus() {
    xcb_connection_t* const server = connection();
    if (server == nullptr) {
        return QGuiApplication::focusWindow() != nullptr;
    }
    const auto reply =
        owned(xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
    return reply && isOurs(reply->focus);
}

bool isComposited() {
    return connection() == nullptr ||
           selectionOwner(atom("_NET_WM_CM_S" + std::to_string(screenNumber()))) != XCB_WINDOW_NONE;
}

void leaveOutOfTaskBars(QWidget& window) {
    xcb_connection_t* const server = connection();
    if (server == nullptr) {
        return;
    }
    // Qt adds its own states when it maps the window.
    const std::array states{atom("_NET_WM_STATE_SKIP_TASKBAR"), atom("_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, states.size(), states.data());
}

void showOnAllWorkspaces(QWidget& window) {
    xcb_connection_t* const server = connection();
    if (server == nullptr) {
        return;
    }
    constexpr std::uint32_t all = 0xffffffff;
    constexpr std::uint32_t fromProgram = 1;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = atom("_NET_WM_DESKTOP");
    message.data.data32[0] = all;
    message.data.data32[1] = fromProgram;
    xcb_send_event(server, 0, rootWindow(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

void makeTransparent(QWindow& window) {
    xcb_connection_t* const server = connection();
    if (server == nullptr) {
        return;
    }
    const auto number = static_cast<xcb_window_t>(window.winId());
    constexpr std::uint32_t nothing = 0;
    xcb_change_window_attributes(server, number, XCB_CW_BACK_PIXEL, &nothing);
    xcb_clear_area(server, 0, number, 0, 0, 0, 0);
}

void useActivationToken(QWidget& window) {
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    xcb_connection_t* const server = connection();
    if (server == nullptr || token.isEmpty()) {
        return; // Qt uses it on Wayland
    }
    qunsetenv("XDG_ACTIVATION_TOKEN");
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        atom("_NET_STARTUP_ID"), atom("UTF8_STRING"), 8,
                        static_cast<std::uint32_t>(token.size()), token.constData());
}

} // namespace tidewell::x11
