#include "app/panel/SampleTimes.h"

#include "base/text/IntegerText.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

namespace tidewell {

namespace {

struct SampleTimes {
    Q_DECLARE_TR_FUNCTIONS(SampleTimes)
};

} // namespace

std::vector<std::size_t> gapsBefore(const std::vector<double>& times) {
    std::vector<double> intervals;
    std::adjacent_difference(times.begin(), times.end(), std::back_inserter(intervals));
    std::vector<double> sorted(intervals.begin() + (intervals.empty() ? 0 : 1), intervals.end());
    std::vector<std::size_t> gaps;
    if (!sorted.empty()) {
        const auto middle = sorted.begin() + std::ssize(sorted) / 2;
        std::ranges::nth_element(sorted, middle);
        for (std::size_t index = 1; index < intervals.size(); ++index) {
            if (*middle > 0 && intervals[index] > 3 * *middle) {
                gaps.push_back(index);
            }
        }
    }
    return gaps;
}

QString spanText(const std::vector<double>& times) {
    const double seconds = times.size() < 2 ? 0 : times.back() - times.front();
    if (!(seconds >= 0.5) || !std::isfinite(seconds)) {
        return {};
    }
    const auto number = [](double value) {
        return QString::fromStdString(integerText(std::llround(value)));
    };
    if (seconds < 60) {
        return SampleTimes::tr("last %1 s").arg(number(seconds));
    }
    const double minutes = std::round(seconds / 60);
    if (minutes < 60) {
        return SampleTimes::tr("last %1 min").arg(number(minutes));
    }
    const double hours = std::floor(minutes / 60);
    if (hours >= 48) {
        return SampleTimes::tr("last %1 d").arg(number(std::round(hours / 24)));
    }
    return SampleTimes::tr("last %1 h %2 min").arg(number(hours), number(minutes - 60 * hours));
}

} // namespace tidewell
