#pragma once

#include <algorithm>
#include <charconv>
#include <concepts>
#include <optional>
#include <string_view>
#include <system_error>

namespace tidewell {

// Splits plain text such as the files of /proc and desktop entries. Any thread.

/// Takes the next line off the front of `text`, without its end.
inline std::string_view takeLine(std::string_view& text) {
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

/// Takes the next word off the front of `text`; empty at its end.
inline std::string_view takeWord(std::string_view& text) {
    constexpr std::string_view blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const auto word = text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(word.size());
    return word;
}

/// The decimal number that the whole of `word` is.
template <std::integral Number>
std::optional<Number> number(std::string_view word) {
    Number value = 0;
    const auto [stop, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool whole = error == std::errc() && stop == word.data() + word.size();
    return whole ? std::optional(value) : std::nullopt;
}

/// What follows the last slash of `path`.
inline std::string_view lastComponent(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace tidewell
