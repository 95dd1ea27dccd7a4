#include "model/processes/linux/ReadableLine.h"

#include "base/text/Utf8.h"

namespace tidewell {

namespace {

constexpr std::string_view replacement = "\xef\xbf\xbd";

bool isControl(char32_t character) {
    constexpr char32_t lineSeparator = 0x2028;
    constexpr char32_t paragraphSeparator = 0x2029;
    return character < 0x20 || (character >= 0x7f && character < 0xa0) ||
           character == lineSeparator || character == paragraphSeparator;
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80;
}

} // namespace

std::string readableLine(std::string_view bytes) {
    std::string line;
    line.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::string_view before = bytes;
        const auto character = takeCharacter(bytes);
        if (!character) {
            // Once for all bytes of a character that is cut short: the kernel cuts names.
            do {
                bytes.remove_prefix(1);
            } while (!bytes.empty() && continuesCharacter(bytes.front()));
            line += replacement;
        } else if (*character >= '\t' && *character <= '\r') {
            line += ' ';
        } else if (isControl(*character)) {
            line += replacement;
        } else {
            line += before.substr(0, before.size() - bytes.size());
        }
    }
    return line;
}

} // namespace tidewell
