#pragma once

#include <chrono>
#include <string_view>

namespace tidewell {

/// Whether the compositor of `WAYLAND_DISPLAY` offers that interface. False without a compositor,
/// and where it has not told after `patience`. Over a connection of its own: works before the
/// application object is made.
bool compositorOffers(std::string_view interface, std::chrono::milliseconds patience);

} // namespace tidewell
