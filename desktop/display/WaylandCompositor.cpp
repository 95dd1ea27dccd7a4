#include "desktop/display/WaylandCompositor.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <wayland-client.h>

namespace tidewell {

namespace {

using Clock = std::chrono::steady_clock;
using Connection = std::unique_ptr<wl_display, decltype(&wl_display_disconnect)>;

struct Question {
    std::string_view interface;
    bool isOffered = false;
    bool isAnswered = false; ///< all that is offered has been told
};

constexpr wl_registry_listener registryListener{
    .global =
        [](void* data, wl_registry*, std::uint32_t, const char* interface, std::uint32_t) {
            auto* const question = static_cast<Question*>(data);
            question->isOffered = question->isOffered || question->interface == interface;
        },
    .global_remove = [](void*, wl_registry*, std::uint32_t) {},
};

constexpr wl_callback_listener endListener{
    .done = [](void* data, wl_callback*,
               std::uint32_t) { static_cast<Question*>(data)->isAnswered = true; },
};

/// Not by wl_display_connect(), which waits where the socket's queue is full.
Connection connectToCompositor() {
    Connection none(nullptr, &wl_display_disconnect);
    const char* const name = std::getenv("WAYLAND_DISPLAY");
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    if (name == nullptr || *name == '\0') {
        return none;
    }
    const std::string path = std::filesystem::path(runtime == nullptr ? "" : runtime) / name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return none;
    }
    std::ranges::copy(path, std::begin(address.sun_path));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0) {
        return none;
    }
    if (connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(socket);
        return none;
    }
    return {wl_display_connect_to_fd(socket), &wl_display_disconnect}; // closes it in any case
}

/// Takes the next events; false where there are none before the deadline, or never will be.
bool takeEvents(wl_display* compositor, Clock::time_point deadline) {
    while (wl_display_prepare_read(compositor) != 0) {
        wl_display_dispatch_pending(compositor);
    }
    wl_display_flush(compositor);
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd events{.fd = wl_display_get_fd(compositor), .events = POLLIN, .revents = 0};
    const int ready = left > 0 ? poll(&events, 1, static_cast<int>(left)) : 0;
    if (ready <= 0) {
        wl_display_cancel_read(compositor);
        return ready < 0 && errno == EINTR;
    }
    return wl_display_read_events(compositor) == 0 && wl_display_dispatch_pending(compositor) >= 0;
}

} // namespace

bool compositorOffers(std::string_view interface, std::chrono::milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    const Connection compositor = connectToCompositor();
    if (!compositor) {
        return false;
    }
    Question question{.interface = interface};
    wl_registry* const registry = wl_display_get_registry(compositor.get());
    wl_registry_add_listener(registry, &registryListener, &question);
    wl_callback* const end = wl_display_sync(compositor.get());
    wl_callback_add_listener(end, &endListener, &question);
    while (!question.isAnswered && takeEvents(compositor.get(), deadline)) {
    }
    wl_callback_destroy(end);
    wl_registry_destroy(registry);
    return question.isOffered;
}

} // namespace tidewell
