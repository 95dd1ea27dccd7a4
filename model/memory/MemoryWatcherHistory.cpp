// Saves the watcher's histories and loads them again at the next start.

#include "model/memory/DataContainerJson.h"
#include "model/memory/MemoryWatcher.h"
#include "model/preferences/StoredPreferences.h"

#include <utility>

namespace tidewell {

namespace {

constexpr auto category = "file";

} // namespace

void MemoryWatcher::writeData() {
    auto document = encodeDataContainer(
        {.memoryPressureArray = memoryPressureArray(), .swapUsedArray = swapUsedArray()});
    if (!document) {
        logMessage(environment_.log, "Could not save data", category, __FILE__, "writeData()",
                   __LINE__, LogLevel::error);
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
            logMessage(environment_.log, decoded.error().description(), category, __FILE__,
                       function, __LINE__, LogLevel::error);
        } else {
            loaded = std::move(*decoded);
        }
    } else {
        logMessage(environment_.log, "No data available yet...", category, __FILE__, function,
                   __LINE__, LogLevel::info);
    }
    memoryPressureArray_ = std::move(loaded.memoryPressureArray);
    swapUsedArray_ = std::move(loaded.swapUsedArray);
}

} // namespace tidewell
