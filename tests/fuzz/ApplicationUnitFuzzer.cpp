#include "processes/linux/ApplicationUnit.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto unit = tidewell::applicationUnitOf(text);
    if (unit && (unit->identifiers.empty() || text.find(unit->name) == std::string_view::npos)) {
        std::abort();
    }
    return 0;
}
