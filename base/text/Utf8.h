#pragma once

#include <optional>
#include <string_view>

namespace tidewell {

/// Takes the first character off the front of `text`, which must not be empty. Empty, and `text`
/// as it was, when no well-formed UTF-8 sequence stands there: overlong forms, surrogates and what
/// lies beyond U+10FFFF are none.
std::optional<char32_t> takeCharacter(std::string_view& text);

/// Whether all of `bytes` is well-formed UTF-8.
bool isUtf8(std::string_view bytes);

} // namespace tidewell
