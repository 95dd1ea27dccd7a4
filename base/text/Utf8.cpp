#include "base/text/Utf8.h"

namespace tidewell {

std::optional<char32_t> takeCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80) {
        text.remove_prefix(1);
        return lead;
    }
    const std::size_t length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    if (lead < 0xc2 || lead > 0xf4 || text.size() < length) {
        return std::nullopt;
    }
    char32_t character = lead & (0x7fU >> length);
    for (const char byte : text.substr(1, length - 1)) {
        const auto bits = static_cast<unsigned char>(byte);
        if ((bits & 0xc0U) != 0x80) {
            return std::nullopt;
        }
        character = character << 6U | (bits & 0x3fU);
    }
    // Two bytes cannot be overlong: their leads 0xc0 and 0xc1 are refused above.
    const bool overlong =
        (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    const bool surrogate = character >= 0xd800 && character <= 0xdfff;
    if (overlong || surrogate || character > 0x10ffff) {
        return std::nullopt;
    }
    text.remove_prefix(length);
    return character;
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
