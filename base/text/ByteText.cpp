#include "base/text/ByteText.h"

#include "base/text/CachedNumberFormatter.h"

#include <algorithm>
#include <array>
#include <limits>

namespace tidewell {

namespace {

struct Unit {
    const char* symbol;
    unsigned shift;         // the unit is 2^shift bytes
    std::uint64_t fraction; // parts that the unit is shown in: 10 for one decimal
};

constexpr std::array units{Unit{"bytes", 0, 1}, Unit{"KB", 10, 1}, Unit{"MB", 20, 10},
                           Unit{"GB", 30, 100}, Unit{"TB", 40, 100}};

/// `magnitude` in parts of `unit`, rounded half to even. Whole units and the rest are scaled
/// separately, so that nothing overflows.
std::uint64_t partsOf(std::uint64_t magnitude, const Unit& unit) {
    const std::uint64_t size = std::uint64_t{1} << unit.shift;
    const std::uint64_t scaledRest = (magnitude & (size - 1)) * unit.fraction;
    const std::uint64_t parts = (magnitude >> unit.shift) * unit.fraction + scaledRest / size;
    const std::uint64_t twiceLeft = scaledRest % size * 2;
    const bool up = twiceLeft > size || (twiceLeft == size && parts % 2 == 1);
    return up ? parts + 1 : parts;
}

} // namespace

std::string sizeText(std::uint64_t size) {
    constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
    return byteText(static_cast<std::int64_t>(std::min(size, largest)));
}

std::string byteText(std::int64_t count, const std::string& localeIdentifier) {
    const std::uint64_t magnitude =
        count < 0 ? ~static_cast<std::uint64_t>(count) + 1 : static_cast<std::uint64_t>(count);
    std::size_t chosen = 0;
    std::uint64_t parts = partsOf(magnitude, units[0]);
    while (chosen + 1 < units.size() && parts >= 1024 * units[chosen].fraction) {
        ++chosen;
        parts = partsOf(magnitude, units[chosen]);
    }
    const Unit& unit = units[chosen];
    const double value = static_cast<double>(parts) / static_cast<double>(unit.fraction);

    // This formatter's first use dirties 28 KB, the older DecimalFormat's 52.
    static thread_local CachedNumberFormatter formatter(
        icu::number::NumberFormatter::with().precision(icu::number::Precision::maxFraction(2)));
    UErrorCode status = U_ZERO_ERROR;
    std::string text;
    formatter.in(localeIdentifier)
        .formatDouble(count < 0 ? -value : value, status)
        .toString(status)
        .toUTF8String(text);
    return text + " " + (magnitude == 1 ? "byte" : unit.symbol);
}

} // namespace tidewell
