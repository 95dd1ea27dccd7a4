#pragma once

#include "base/text/UserLocale.h"

#include <cstdint>
#include <string>

namespace tidewell {

/// The text of a whole number in the digits of the locale, such as "ar_EG", not grouped. UTF-8. Any
/// thread.
std::string integerText(std::int64_t value,
                        const std::string& localeIdentifier = userLocale(LocaleCategory::numbers));

} // namespace tidewell
