#include "model/processes/linux/ApplicationUnit.h"
#include "tests/fuzz/Require.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const auto name : {tidewell::innermostUnit(text), text}) {
        const auto unit = tidewell::parseApplicationUnit(name);
        require(!unit || (!unit->identifiers.empty() && unit->name == name));
    }
    return 0;
}
