#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tidewell {

/// The free-memory percentage out of the memory-pressure tool's output, which must be well-formed
/// UTF-8: the number in the fifth word of the first line that says "System-wide" and has one
/// there. Words are parted by spaces alone. The number is what stands before the word's first
/// percent sign that follows a decimal digit of any script, back to where those digits begin; or
/// the whole word, where there is no such percent sign. Only ASCII digits, with a sign if the
/// whole word is read, make a number, and it must fit in 64 bits.
std::optional<std::int64_t> parseFreeMemoryPercentage(std::string_view text);

} // namespace tidewell
