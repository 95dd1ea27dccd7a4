#pragma once

#include <QHash>
#include <QVariant>

#include <cstdint>
#include <optional>
#include <span>

namespace tidewell {

/// The settings that a desktop hands to X clients, numbers and texts, by names such as
/// "Net/ThemeName"; colours are left out.
using XSettings = QHash<QByteArray, QVariant>;

/// The value of the property _XSETTINGS_SETTINGS; empty where it is not whole. Any program may
/// have written it. Pure.
std::optional<XSettings> parseXSettings(std::span<const std::uint8_t> bytes);

} // namespace tidewell
