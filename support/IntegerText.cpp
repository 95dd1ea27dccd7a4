#include "support/IntegerText.h"

#include "support/UserLocale.h"

#include <unicode/numberformatter.h>

namespace tidewell {

std::string integerText(std::int64_t value) {
    return integerText(value, userLocale(LocaleCategory::numbers));
}

std::string integerText(std::int64_t value, const std::string& localeIdentifier) {
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    icu::number::NumberFormatter::withLocale(icu::Locale::createCanonical(localeIdentifier.c_str()))
        .grouping(UNUM_GROUPING_OFF)
        .formatInt(value, status)
        .toString(status)
        .toUTF8String(text);
    return text;
}

} // namespace tidewell
