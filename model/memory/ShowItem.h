#pragma once

#include "base/values/Colour.h"
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

    auto fields() const { return std::tie(id, label, value, color); }
    bool operator==(const ShowItem&) const = default;
};

} // namespace tidewell
