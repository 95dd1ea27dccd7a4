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

struct Parts {
    std::vector<std::string_view> numbers; ///< without leading zeros: 0 is empty
    std::vector<std::string_view> preRelease;
    bool isRelease = false;
};

/// Cuts the longest beginning off whose characters all are `ofKind`.
template <typename Kind>
std::string_view takeRun(std::string_view& text, Kind ofKind) {
    const auto end = std::ranges::find_if_not(text, ofKind);
    const std::string_view run = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(run.size());
    return run;
}

std::string_view withoutLeadingZeros(std::string_view digits) {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

Parts partsOf(std::string_view text) {
    text = text.substr(0, text.find('+'));
    Parts parts;
    parts.isRelease = !text.empty() && isDigit(text.front());
    while (!text.empty() && isDigit(text.front())) {
        parts.numbers.push_back(withoutLeadingZeros(takeRun(text, isDigit)));
        if (text.size() > 1 && text[0] == '.' && isDigit(text[1])) {
            text.remove_prefix(1);
        }
    }
    while (!parts.numbers.empty() && parts.numbers.back().empty()) {
        parts.numbers.pop_back();
    }
    parts.isRelease = parts.isRelease && text.empty();
    while (!text.empty()) {
        if (isDigit(text.front())) {
            parts.preRelease.push_back(takeRun(text, isDigit));
        } else if (isLetter(text.front())) {
            parts.preRelease.push_back(takeRun(text, isLetter));
        } else {
            text.remove_prefix(1);
        }
    }
    return parts;
}

std::weak_ordering compareNumbers(std::string_view left, std::string_view right) {
    left = withoutLeadingZeros(left);
    right = withoutLeadingZeros(right);
    return left.size() == right.size() ? std::weak_ordering(left <=> right)
                                       : std::weak_ordering(left.size() <=> right.size());
}

std::weak_ordering compareIdentifiers(std::string_view left, std::string_view right) {
    if (isDigit(left.front()) != isDigit(right.front())) {
        return isDigit(left.front()) ? std::weak_ordering::less : std::weak_ordering::greater;
    }
    return isDigit(left.front()) ? compareNumbers(left, right) : left <=> right;
}

template <typename Compare>
std::weak_ordering compareLists(const std::vector<std::string_view>& left,
                                const std::vector<std::string_view>& right, Compare compare) {
    return std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(),
                                                  right.end(), compare);
}

} // namespace

std::weak_ordering compareVersions(std::string_view left, std::string_view right) {
    const Parts a = partsOf(left);
    const Parts b = partsOf(right);
    if (const auto order = compareLists(a.numbers, b.numbers, compareNumbers); std::is_neq(order)) {
        return order;
    }
    if (a.isRelease != b.isRelease) {
        return a.isRelease ? std::weak_ordering::greater : std::weak_ordering::less;
    }
    return compareLists(a.preRelease, b.preRelease, compareIdentifiers);
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
