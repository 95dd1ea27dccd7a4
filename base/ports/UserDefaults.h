#pragma once

#include "base/observable/ObserverList.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tidewell {

/// A blob as it is stored: bytes without a meaning of their own.
using Data = std::vector<std::uint8_t>;

using DefaultsValue = std::variant<bool, double, std::string, Data>;

/// The user's preferences of this program: a flat store of values under text keys that lasts from
/// one run to the next. Main thread.
class UserDefaults {
public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// What is stored under `key`; empty when it was never written.
    virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;

    /// Stores `value` under `key` at once: every later read gives it. What cannot be written to
    /// the disk is logged by the store, kept for this run, and tried again with the next write.
    void set(std::string_view key, DefaultsValue value) {
        store(key, std::move(value));
        observers_.tell(key);
    }

    /// Plain reads, which know nothing of the views' defaults: a value never written, or of
    /// another type, reads as 0, false or empty. A Boolean reads as 0 or 1 where a number is asked
    /// for, and a number as whether it differs from 0 where a Boolean is.
    double doubleForKey(std::string_view key) const;
    bool boolForKey(std::string_view key) const;
    std::optional<Data> dataForKey(std::string_view key) const;

    /// Calls `observer` with the key after every `set()`.
    Subscription didChange(std::function<void(std::string_view key)> observer) {
        return observers_.add(std::move(observer));
    }

protected:
    virtual void store(std::string_view key, DefaultsValue value) = 0;

private:
    ObserverList<std::string_view> observers_;
};

} // namespace tidewell
