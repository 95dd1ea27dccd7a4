#pragma once

#include "base/values/ThemeIcon.h"
#include "model/memory/ShowItem.h"
#include "model/processes/ApplicationUsage.h"

#include <memory>
#include <optional>

namespace tidewell {

/// One row of a list of figures: of applications, with icons, or of the machine's memory, without.
struct DisplayContainer {
    UUID id = UUID::random(); ///< fresh for every row of every survey: lists never match old rows
    ShowItem showItem;
    std::optional<ThemeIcon> image;
    std::shared_ptr<const ApplicationUsage> usage = nullptr; ///< null but for applications

    /// Images and usages are equal when they are the same object.
    bool operator==(const DisplayContainer&) const = default;
};

} // namespace tidewell

template <>
struct std::hash<tidewell::DisplayContainer> {
    std::size_t operator()(const tidewell::DisplayContainer& row) const noexcept {
        using tidewell::hashOfFields;
        const auto& item = row.showItem;
        return row.image ? hashOfFields(row.id, item.id, item.label, item.value, item.color, 1,
                                        *row.image, row.usage)
                         : hashOfFields(row.id, item.id, item.label, item.value, item.color, 0,
                                        row.usage);
    }
};
