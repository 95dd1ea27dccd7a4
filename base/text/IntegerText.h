#pragma once

#include <cstdint>
#include <string>

namespace tidewell {

/// The text of a whole number in the digits of the user's locale for numbers, not grouped. UTF-8.
/// Any thread.
std::string integerText(std::int64_t value);

/// The same in the locale named, such as "ar_EG".
std::string integerText(std::int64_t value, const std::string& localeIdentifier);

} // namespace tidewell
