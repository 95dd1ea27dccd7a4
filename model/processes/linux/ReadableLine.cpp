#include "model/processes/linux/ReadableLine.h"

#include "base/text/Utf8.h"

#include <unicode/uchar.h>

namespace tidewell {

namespace {

constexpr std::string_view replacement = "\xef\xbf\xbd";

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80;
}

bool isVisible(UChar32 character) {
    constexpr UChar32 emptyBraillePattern = 0x2800; // a symbol by its category
    return u_isgraph(character) && character != emptyBraillePattern &&
           !u_hasBinaryProperty(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT);
}

} // namespace

std::string readableLine(std::string_view bytes) {
    std::string line;
    line.reserve(bytes.size());
    bool isSeen = false;
    while (!bytes.empty()) {
        const std::string_view before = bytes;
        const auto taken = takeCharacter(bytes);
        if (!taken) {
            // Once for all bytes of a character that is cut short: the kernel cuts names.
            do {
                bytes.remove_prefix(1);
            } while (!bytes.empty() && continuesCharacter(bytes.front()));
            line += replacement;
            continue;
        }
        const auto character = static_cast<UChar32>(*taken);
        if (u_isUWhiteSpace(character)) {
            line += ' ';
        } else if (u_iscntrl(character) && u_charType(character) == U_CONTROL_CHAR) {
            line += replacement;
        } else if (!u_hasBinaryProperty(character, UCHAR_BIDI_CONTROL)) {
            line += before.substr(0, before.size() - bytes.size());
            isSeen = isSeen || isVisible(character);
        }
    }
    return isSeen ? line : "";
}

} // namespace tidewell
