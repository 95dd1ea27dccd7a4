#pragma once

#include "base/values/UUID.h"
#include "model/memory/MemoryPressureItem.h"
#include "model/memory/SwapItem.h"

#include <vector>

namespace tidewell {

/// The history as it is kept from one run of the program to the next.
struct DataContainer {
    UUID id = UUID::random();                            ///< fresh each time the history is saved
    std::vector<MemoryPressureItem> memoryPressureArray; ///< oldest first
    std::vector<SwapItem> swapUsedArray;                 ///< oldest first
};

} // namespace tidewell
