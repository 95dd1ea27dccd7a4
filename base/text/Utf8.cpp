#include "base/text/Utf8.h"

#include <unicode/utf8.h>

namespace tidewell {

std::optional<char32_t> takeCharacter(std::string_view& text) {
    std::size_t next = 0;
    UChar32 character = 0;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion" // within ICU's macro
#pragma GCC diagnostic ignored "-Wsign-conversion"
    U8_NEXT(text, next, text.size(), character); // NOLINT(bugprone-inc-dec-in-conditions)
#pragma GCC diagnostic pop
    if (character < 0) {
        return std::nullopt;
    }
    text.remove_prefix(next);
    return static_cast<char32_t>(character);
}

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        if (!takeCharacter(bytes)) {
            return false;
        }
    }
    return true;
}

} // namespace tidewell
