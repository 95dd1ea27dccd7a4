#pragma once

#include "base/ports/UserDefaults.h"

#include <map>

namespace tidewell {

/// Preferences that last as long as the test.
class MemoryUserDefaults final : public UserDefaults {
public:
    std::optional<DefaultsValue> value(std::string_view key) const override {
        const auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }
    void set(std::string_view key, DefaultsValue value) override {
        ++writes;
        setLater(key, std::move(value));
    }
    void setLater(std::string_view key, DefaultsValue value) override {
        values_.insert_or_assign(std::string(key), std::move(value));
    }

    int writes = 0;

private:
    std::map<std::string, DefaultsValue, std::less<>> values_;
};

} // namespace tidewell
