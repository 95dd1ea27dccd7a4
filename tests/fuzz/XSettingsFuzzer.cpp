#include "desktop/appearance/XSettings.h"
#include "tests/fuzz/Require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto settings = tidewell::parseXSettings({data, size});
    // Each takes twelve bytes at least, and the header twelve.
    require(!settings || settings->size() * 12 + 12 <= size);
    return 0;
}
