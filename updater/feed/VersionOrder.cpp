#include "updater/feed/VersionOrder.h"

#include <algorithm>
#include <vector>

namespace tidewell {

namespace {

// Not the C library's functions, which ask the locale.
bool isDigit(char character) {
    return character >= '0' && character <= '9';
}
bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// An element of a version. Versions are compared as lists of these: by kind, then numbers by their
/// count of digits and their digits, words by their letters. `release` or `preRelease` ends the
/// numbers, and is less than a further number.
struct Part {
    enum class Kind { preRelease, release, number, word };

    Kind kind;
    std::size_t digits = 0; ///< of a number
    std::string_view text;  ///< a number's without leading zeros, so that 0 is empty

    auto operator<=>(const Part&) const = default;
};

/// Removes the longest prefix whose characters all are `ofKind`, and returns it.
template <typename Kind>
std::string_view takeRun(std::string_view& text, Kind ofKind) {
    const auto end = std::ranges::find_if_not(text, ofKind);
    const std::string_view run = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(run.size());
    return run;
}

Part takeNumber(std::string_view& text) {
    std::string_view digits = takeRun(text, isDigit);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return {Part::Kind::number, digits.size(), digits};
}

std::vector<Part> partsOf(std::string_view text) {
    text = text.substr(0, text.find('+'));
    const bool beginsWithNumber = !text.empty() && isDigit(text.front());
    std::vector<Part> parts;
    while (!text.empty() && isDigit(text.front())) {
        parts.push_back(takeNumber(text));
        if (text.size() > 1 && text[0] == '.' && isDigit(text[1])) {
            text.remove_prefix(1);
        }
    }
    while (!parts.empty() && parts.back().text.empty()) {
        parts.pop_back(); // a missing number counts as 0
    }
    const bool isRelease = beginsWithNumber && text.empty();
    parts.push_back({isRelease ? Part::Kind::release : Part::Kind::preRelease, 0, {}});
    while (!text.empty()) {
        if (isDigit(text.front())) {
            parts.push_back(takeNumber(text));
        } else if (isLetter(text.front())) {
            parts.push_back({Part::Kind::word, 0, takeRun(text, isLetter)});
        } else {
            text.remove_prefix(1);
        }
    }
    return parts;
}

} // namespace

std::weak_ordering compareVersions(std::string_view left, std::string_view right) {
    return partsOf(left) <=> partsOf(right);
}

bool isVersion(std::string_view text) {
    constexpr std::size_t longest = 64;
    return !text.empty() && text.size() <= longest && isDigit(text.front()) &&
           std::ranges::all_of(text, [](char character) {
               return isDigit(character) || isLetter(character) || character == '.' ||
                      character == '-' || character == '+';
           });
}

} // namespace tidewell
