// Saves the watcher's histories and loads them again at the next start.

#include "model/memory/DataContainerJson.h"
#include "model/memory/MemoryWatcher.h"
#include "model/preferences/StoredPreferences.h"

#include <utility>

namespace tidewell {

void MemoryWatcher::writeData() {
    auto document = encodeDataContainer(
        {.memoryPressureArray = memoryPressureArray(), .swapUsedArray = swapUsedArray()});
    if (!document) {
        logError(environment_.log, "Could not save data", "writeData()", "file");
        return;
    }
    write(environment_.defaults, preferences::dataContainer, std::move(*document));
}

void MemoryWatcher::readData() {
    constexpr auto function = "readData()";
    DataContainer loaded;
    if (const auto document = stored(environment_.defaults, preferences::dataContainer)) {
        auto decoded = decodeDataContainer(*document);
        if (!decoded) {
            logError(environment_.log, decoded.error().description(), function, "file");
        } else {
            loaded = std::move(*decoded);
        }
    } else {
        logInfo(environment_.log, "No data available yet...", function, "file");
    }
    memoryPressureArray_ = std::move(loaded.memoryPressureArray);
    swapUsedArray_ = std::move(loaded.swapUsedArray);
}

} // namespace tidewell
