#include "desktop/appearance/XSettings.h"

#include <utility>

namespace tidewell {

namespace {

enum class Kind : std::uint8_t { number, text, colour };

/// Reads from the front. After a failure everything fails.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes)
        : rest_(bytes)
        , isBigEndian_(!bytes.empty() && bytes.front() != 0) {
        bytesOf(4);
    }

    bool isWhole() const { return isWhole_; }

    /// Of that many bytes, four at most; 0 after a failure.
    std::uint32_t card(std::size_t size) {
        std::uint32_t value = 0;
        const auto bytes = bytesOf(size);
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            value = value << 8U | bytes[isBigEndian_ ? at : bytes.size() - 1 - at];
        }
        return value;
    }

    std::string text(std::size_t size) {
        const auto bytes = bytesOf(size);
        std::string result(bytes.begin(), bytes.end());
        bytesOf((4 - size % 4) % 4);
        return result;
    }

    std::span<const std::uint8_t> bytesOf(std::size_t size) {
        isWhole_ = isWhole_ && size <= rest_.size();
        const auto bytes = rest_.first(isWhole_ ? size : 0);
        rest_ = rest_.subspan(bytes.size());
        return bytes;
    }

private:
    std::span<const std::uint8_t> rest_;
    bool isBigEndian_;
    bool isWhole_ = true;
};

} // namespace

std::optional<XSettings> parseXSettings(std::span<const std::uint8_t> bytes) {
    XSettings settings;
    Reader reader(bytes);
    reader.card(4); // the serial number
    const std::uint32_t count = reader.card(4);
    for (std::uint32_t number = 0; number < count && reader.isWhole(); ++number) {
        const auto kind = static_cast<Kind>(reader.card(1));
        reader.bytesOf(1);
        std::string name = reader.text(reader.card(2));
        reader.card(4); // the serial number of its last change
        switch (kind) {
        case Kind::number:
            settings[std::move(name)] = static_cast<std::int32_t>(reader.card(4));
            break;
        case Kind::text:
            settings[std::move(name)] = reader.text(reader.card(4));
            break;
        case Kind::colour:
            reader.bytesOf(8);
            break;
        default:
            return std::nullopt; // of unknown length
        }
    }
    return reader.isWhole() ? std::optional(std::move(settings)) : std::nullopt;
}

} // namespace tidewell
