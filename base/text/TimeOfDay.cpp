#include "base/text/TimeOfDay.h"

#include <unicode/datefmt.h>
#include <unicode/simpletz.h>

#include <cmath>
#include <ctime>
#include <memory>
#include <optional>

namespace tidewell {

namespace {

/// The last second on both sides of 1970 that ICU's calendars reach.
constexpr double lastSecond = 8.64e12;

/// What the local clock is ahead of UTC at `timestamp`, in milliseconds. ICU looks the machine's
/// time zone up once per process; this program runs for weeks, on machines that travel, so the C
/// library is asked, which notices a change.
std::optional<std::int32_t> localOffset(double timestamp) {
    const auto seconds = static_cast<std::time_t>(std::floor(timestamp));
    std::tm local{};
    tzset();
    if (localtime_r(&seconds, &local) == nullptr) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(local.tm_gmtoff * 1000);
}

} // namespace

std::string timeOfDayString(double timestamp, const std::string& localeIdentifier) {
    if (!(std::abs(timestamp) <= lastSecond)) {
        return {};
    }
    const auto offset = localOffset(timestamp);
    const auto locale = icu::Locale::createCanonical(localeIdentifier.c_str());
    // On a locale that is none, this would crash.
    const std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createTimeInstance(
        icu::DateFormat::kMedium, locale.isBogus() != 0 ? icu::Locale::getRoot() : locale));
    if (!offset || !format) {
        return {};
    }
    format->adoptTimeZone(new icu::SimpleTimeZone(*offset, u"local"));
    icu::UnicodeString text;
    std::string result;
    format->format(timestamp * 1000, text).toUTF8String(result);
    return result;
}

} // namespace tidewell
