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

    auto fields() const { return std::tie(id, showItem, image, usage); }
    /// Images and usages are equal when they are the same object.
    bool operator==(const DisplayContainer&) const = default;
};

} // namespace tidewell
