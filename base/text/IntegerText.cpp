#include "base/text/IntegerText.h"

#include "base/text/CachedNumberFormatter.h"

namespace tidewell {

std::string integerText(std::int64_t value, const std::string& localeIdentifier) {
    static thread_local CachedNumberFormatter formatter(
        icu::number::NumberFormatter::with().grouping(UNUM_GROUPING_OFF));
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    formatter.in(localeIdentifier).formatInt(value, status).toString(status).toUTF8String(text);
    return text;
}

} // namespace tidewell
