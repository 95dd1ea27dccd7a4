#include "model/memory/DataContainerJson.h"
#include "tests/fuzz/Require.h"

// What is read can be written, and reads back as it was, but for the oldest samples.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    const auto history = decodeDataContainer(Data(data, data + size), 3);
    if (history) {
        require(history->memoryPressureArray.size() <= 3 && history->swapUsedArray.size() <= 3);
        const auto again = decodeDataContainer(encodeDataContainer(*history).value());
        require(again && again->memoryPressureArray == history->memoryPressureArray &&
                again->swapUsedArray == history->swapUsedArray);
    }
    return 0;
}
