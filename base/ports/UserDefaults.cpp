#include "base/ports/UserDefaults.h"

namespace tidewell {

double UserDefaults::doubleForKey(std::string_view key) const {
    const auto stored = value(key);
    if (!stored) {
        return 0;
    }
    if (const auto* number = std::get_if<double>(&*stored)) {
        return *number;
    }
    const auto* flag = std::get_if<bool>(&*stored);
    return flag != nullptr && *flag ? 1 : 0;
}

bool UserDefaults::boolForKey(std::string_view key) const {
    return doubleForKey(key) != 0;
}

std::optional<Data> UserDefaults::dataForKey(std::string_view key) const {
    auto stored = value(key);
    if (stored) {
        if (auto* data = std::get_if<Data>(&*stored)) {
            return std::move(*data);
        }
    }
    return std::nullopt;
}

} // namespace tidewell
