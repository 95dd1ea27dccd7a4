#include "model/processes/linux/ApplicationUnit.h"
#include "tests/fuzz/Require.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto unit = tidewell::applicationUnitOf(text);
    require(!unit || (!unit->identifiers.empty() && text.find(unit->name) != text.npos));
    return 0;
}
