#pragma once

#include "base/ports/UserDefaults.h"

#include <type_traits>
#include <utility>

namespace tidewell {

/// One stored value of the program: its key, its type (bool, double, std::string or Data) and what
/// a view shows as long as nothing was ever stored. A view's default is shown and never written.
template <typename T>
struct StoredPreference {
    /// Texts and blobs give it as text, which unlike a vector can be a constant.
    using ViewDefault = std::conditional_t<std::is_arithmetic_v<T>, T, std::string_view>;

    std::string_view key;
    ViewDefault viewDefault;
};

/// What is stored under the preference's key; empty when it was never written or is of another
/// type. A Boolean serves as a number, 0 or 1, and a number as a Boolean, whether it differs from
/// 0.
template <typename T>
std::optional<T> stored(const UserDefaults& defaults, const StoredPreference<T>& preference) {
    auto value = defaults.value(preference.key);
    if (!value) {
        return std::nullopt;
    }
    if constexpr (std::is_arithmetic_v<T>) {
        if (const auto* flag = std::get_if<bool>(&*value)) {
            return static_cast<T>(*flag);
        }
        if (const auto* number = std::get_if<double>(&*value)) {
            return static_cast<T>(*number);
        }
    } else if (auto* own = std::get_if<T>(&*value)) {
        return std::move(*own);
    }
    return std::nullopt;
}

/// What a view shows: what is stored, or the default.
template <typename T>
T readForView(const UserDefaults& defaults, const StoredPreference<T>& preference) {
    if (auto value = stored(defaults, preference)) {
        return std::move(*value);
    }
    if constexpr (std::is_arithmetic_v<T>) {
        return preference.viewDefault;
    } else {
        return T(preference.viewDefault.begin(), preference.viewDefault.end());
    }
}

/// Stores `value` at once. It takes no part in deducing T: an `int` given for a number is
/// converted.
template <typename T>
void write(UserDefaults& defaults, const StoredPreference<T>& preference,
           std::type_identity_t<T> value) {
    defaults.set(preference.key, std::move(value));
}

/// The same by `UserDefaults::setLater()`.
template <typename T>
void writeLater(UserDefaults& defaults, const StoredPreference<T>& preference,
                std::type_identity_t<T> value) {
    defaults.setLater(preference.key, std::move(value));
}

} // namespace tidewell
