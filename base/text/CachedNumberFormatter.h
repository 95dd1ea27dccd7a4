#pragma once

#include <unicode/numberformatter.h>

#include <optional>
#include <string>
#include <utility>

namespace tidewell {

/// Caches the formatter of the locale that was asked for last: making one takes longer than
/// painting a row of a list. One thread.
class CachedNumberFormatter final {
public:
    explicit CachedNumberFormatter(icu::number::UnlocalizedNumberFormatter settings)
        : settings_(std::move(settings)) {}

    /// Good until the next call.
    const icu::number::LocalizedNumberFormatter& in(const std::string& localeIdentifier) {
        if (!formatter_ || localeIdentifier_ != localeIdentifier) {
            formatter_ = settings_.locale(icu::Locale::createCanonical(localeIdentifier.c_str()));
            localeIdentifier_ = localeIdentifier;
        }
        return *formatter_;
    }

private:
    icu::number::UnlocalizedNumberFormatter settings_;
    std::string localeIdentifier_;
    std::optional<icu::number::LocalizedNumberFormatter> formatter_;
};

} // namespace tidewell
