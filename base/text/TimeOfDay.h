#pragma once

#include "base/text/UserLocale.h"

#include <string>

namespace tidewell {

/// The time of day of `timestamp` (seconds since 1970-01-01 00:00:00 UTC) on the machine's local
/// clock, with seconds, as the locale writes it, such as "de_DE": "14:03:27" or "2:03:27 PM", the
/// latter perhaps with a no-break space. A change of the machine's time zone shows in the next
/// text. Empty for a timestamp that no calendar has (not finite, or beyond some 270,000 years).
/// UTF-8. Any thread.
std::string timeOfDayString(double timestamp,
                            const std::string& localeIdentifier = userLocale(LocaleCategory::time));

} // namespace tidewell
