#pragma once

#include <unicode/numberformatter.h>

#include <optional>
#include <string>
#include <utility>

namespace tidewell {

/// Keeps the formatter of the locale that it was last asked for: making one takes longer than all
/// the rest of a row that is painted. One thread.
class KeptNumberFormatter final {
public:
    explicit KeptNumberFormatter(icu::number::UnlocalizedNumberFormatter settings)
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
