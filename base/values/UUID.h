#pragma once

#include "base/values/Hash.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tidewell {

/// A universally unique identifier (RFC 4122).
class UUID {
public:
    /// A fresh random identifier (version 4). Any thread.
    static UUID random();
    /// Reads the canonical form, in upper or lower case; empty for anything else.
    static std::optional<UUID> parse(std::string_view text);

    /// The canonical form: 8-4-4-4-12 upper-case hexadecimal digits.
    std::string text() const;

    auto fields() const { return std::tuple(text()); }
    auto operator<=>(const UUID&) const = default;

private:
    using Bytes = std::array<std::uint8_t, 16>;
    explicit UUID(const Bytes& bytes)
        : bytes_(bytes) {}

    Bytes bytes_;
};

} // namespace tidewell
