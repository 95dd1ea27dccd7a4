#pragma once

#include <string>
#include <string_view>

namespace tidewell {

/// `bytes` as one line of text that can be shown and that cannot disguise itself: U+FFFD for what
/// is no UTF-8 and for control characters, a blank for white space of any kind, and nothing for the
/// characters that turn the direction of a text. Empty when nothing of it would be visible.
std::string readableLine(std::string_view bytes);

} // namespace tidewell
