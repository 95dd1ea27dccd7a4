#pragma once

#include <string>
#include <string_view>

namespace tidewell {

/// `bytes` as one line of text that can be shown: U+FFFD for what is no UTF-8 and for control
/// characters, and a blank for those of them that only set out a text.
std::string readableLine(std::string_view bytes);

} // namespace tidewell
