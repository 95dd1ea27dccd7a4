#pragma once

#include "base/values/Colour.h"
#include "base/values/Hash.h"
#include "base/values/UUID.h"

#include <cstdint>
#include <string>

namespace tidewell {

/// One labelled figure of a list.
struct ShowItem {
    UUID id = UUID::random(); ///< fresh for every item built: equal figures are not equal items
    std::string label;
    std::uint64_t value = 0; ///< bytes
    Colour color = colours::primary;

    bool operator==(const ShowItem&) const = default;
};

} // namespace tidewell

template <>
struct std::hash<tidewell::ShowItem> {
    std::size_t operator()(const tidewell::ShowItem& item) const noexcept {
        return tidewell::hashOfFields(item.id, item.label, item.value, item.color);
    }
};
