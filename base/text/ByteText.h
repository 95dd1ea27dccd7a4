#pragma once

#include "base/text/UserLocale.h"

#include <cstdint>
#include <string>

namespace tidewell {

/// The text of a byte count, for example "1.5 GB": multiples of 1,024, units from bytes to TB, a
/// plain space before the unit. Bytes and KB have no decimals, MB at most one, GB and TB at most
/// two, none of them a trailing zero; the last digit is rounded half to even. What rounds to 1,024
/// of a unit is 1 of the next. Negative counts read as their magnitude with the locale's minus
/// sign. Digits and separators are those of the locale, such as "de_DE". UTF-8. Any thread.
std::string byteText(std::int64_t count,
                     const std::string& localeIdentifier = userLocale(LocaleCategory::numbers));

/// The text of a size in bytes; clamped to what `byteText` takes.
std::string sizeText(std::uint64_t size);

} // namespace tidewell
