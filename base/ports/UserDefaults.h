#pragma once

#include "base/values/Interface.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tidewell {

/// A blob of bytes.
using Data = std::vector<std::uint8_t>;

using DefaultsValue = std::variant<bool, double, std::string, Data>;

/// The user's preferences of this program: a persistent key-value store. Main thread.
/// `StoredPreference` is the typed access to it.
class UserDefaults : public Interface {
public:
    /// What is stored under `key`; empty when it was never written.
    virtual std::optional<DefaultsValue> value(std::string_view key) const = 0;

    /// Stores `value` under `key` at once: every later read gives it. What cannot be written to
    /// the disk is logged by the store, kept for this run, and tried again with the next write.
    virtual void set(std::string_view key, DefaultsValue value) = 0;

    /// As `set()`, but it reaches the disk with the next one only: for what is written so often
    /// that the disk should not be waited for, and of which little is lost.
    virtual void setLater(std::string_view key, DefaultsValue value) = 0;
};

} // namespace tidewell
