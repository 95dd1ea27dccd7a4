#include "model/memory/probes/darwin/FreeMemoryPercentage.h"

#include "base/text/Utf8.h"
#include "base/text/Words.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tidewell {

namespace {

/// Every decimal zero of Unicode 15; each is followed by the other nine digits of its script.
constexpr std::array<char32_t, 68> decimalZeros{
    0x30,    0x660,   0x6f0,   0x7c0,   0x966,   0x9e6,   0xa66,   0xae6,   0xb66,   0xbe6,
    0xc66,   0xce6,   0xd66,   0xde6,   0xe50,   0xed0,   0xf20,   0x1040,  0x1090,  0x17e0,
    0x1810,  0x1946,  0x19d0,  0x1a80,  0x1a90,  0x1b50,  0x1bb0,  0x1c40,  0x1c50,  0xa620,
    0xa8d0,  0xa900,  0xa9d0,  0xa9f0,  0xaa50,  0xabf0,  0xff10,  0x104a0, 0x10d30, 0x11066,
    0x110f0, 0x11136, 0x111d0, 0x112f0, 0x11450, 0x114d0, 0x11650, 0x116c0, 0x11730, 0x118e0,
    0x11950, 0x11c50, 0x11d50, 0x11da0, 0x11f50, 0x16a60, 0x16ac0, 0x16b50, 0x1d7ce, 0x1d7d8,
    0x1d7e2, 0x1d7ec, 0x1d7f6, 0x1e140, 0x1e2f0, 0x1e4f0, 0x1e950, 0x1fbf0};

bool isDecimalDigit(char32_t character) {
    const auto* const above = std::ranges::upper_bound(decimalZeros, character);
    return above != decimalZeros.begin() && character - *std::prev(above) < 10;
}

bool isNewline(char32_t character) {
    return (character >= U'\n' && character <= U'\r') // line feed to carriage return
           || character == 0x85                       // next line
           || character == 0x2028 || character == 0x2029;
}

/// Takes the next line off the front of `text`, with the one character that ends it.
std::string_view takeUnicodeLine(std::string_view& text) {
    const auto start = text;
    while (!text.empty()) {
        const auto line = start.substr(0, start.size() - text.size());
        const auto character = takeCharacter(text);
        if (!character) {
            text.remove_prefix(1); // part of the line, whatever it is
        } else if (isNewline(*character)) {
            return line;
        }
    }
    return start;
}

/// The fifth of the words between spaces; empty when there are fewer.
std::string_view fifthWord(std::string_view line) {
    std::string_view word;
    for (int count = 0; count < 5; ++count) {
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        word = line.substr(0, line.find(' '));
        line.remove_prefix(word.size());
    }
    return word;
}

/// The digits of the first match of "(\d+)%" in `word`, as Unicode knows digits.
std::optional<std::string_view> digitsBeforePercent(std::string_view word) {
    auto digits = word; // from the start of the present run of digits on
    for (auto rest = word; !rest.empty();) {
        const auto run = digits.substr(0, digits.size() - rest.size());
        const auto character = takeCharacter(rest);
        if (!character) {
            rest.remove_prefix(1);
        } else if (isDecimalDigit(*character)) {
            continue;
        } else if (*character == U'%' && !run.empty()) {
            return run;
        }
        digits = rest;
    }
    return std::nullopt;
}

std::optional<std::int64_t> signedNumber(std::string_view word) {
    // The library reads a minus sign, but no plus.
    if (word.starts_with('+') && !word.starts_with("+-")) {
        word.remove_prefix(1);
    }
    return number<std::int64_t>(word);
}

} // namespace

std::optional<std::int64_t> parseFreeMemoryPercentage(std::string_view text) {
    while (!text.empty()) {
        const auto line = takeUnicodeLine(text);
        if (line.find("System-wide") == std::string_view::npos) {
            continue;
        }
        const auto word = fifthWord(line);
        if (const auto value = signedNumber(digitsBeforePercent(word).value_or(word))) {
            return value;
        }
    }
    return std::nullopt;
}

} // namespace tidewell
