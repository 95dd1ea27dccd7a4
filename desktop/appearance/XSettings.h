#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace tidewell {

/// The settings that a desktop hands to X clients, by names such as "Net/ThemeName"; colours are
/// left out.
using XSettings = std::map<std::string, std::variant<std::int32_t, std::string>, std::less<>>;

/// The value of the property _XSETTINGS_SETTINGS; empty where it is not whole. Any program may
/// have written it. Pure.
std::optional<XSettings> parseXSettings(std::span<const std::uint8_t> bytes);

} // namespace tidewell
