#include "base/values/UUID.h"

#include <charconv>
#include <random>

namespace tidewell {

namespace {

// Whether the canonical form has a hyphen before this byte.
constexpr bool hyphenBefore(std::size_t byte) {
    return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

// The figure list takes 18 identifiers a second: a generator seeded once from the system is a
// good deal cheaper than a system call for each.
std::mt19937_64& generator() {
    thread_local std::mt19937_64 instance = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(),
                           device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    return instance;
}

} // namespace

UUID UUID::random() {
    Bytes bytes{};
    for (std::size_t half = 0; half < 2; ++half) {
        std::uint64_t bits = generator()();
        for (std::size_t i = 0; i < 8; ++i) {
            bytes[half * 8 + i] = static_cast<std::uint8_t>(bits);
            bits >>= 8;
        }
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0fU) | 0x40U); // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3fU) | 0x80U); // variant of RFC 4122
    return UUID(bytes);
}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != 36) {
        return std::nullopt;
    }
    Bytes bytes{};
    std::size_t at = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (hyphenBefore(i) && text[at++] != '-') {
            return std::nullopt;
        }
        const char* const end = text.data() + at + 2;
        if (std::from_chars(text.data() + at, end, bytes[i], 16).ptr != end) {
            return std::nullopt;
        }
        at += 2;
    }
    return UUID(bytes);
}

std::string UUID::text() const {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string result;
    result.reserve(36);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (hyphenBefore(i)) {
            result += '-';
        }
        result += digits[bytes_[i] >> 4U];
        result += digits[bytes_[i] & 0x0fU];
    }
    return result;
}

} // namespace tidewell
