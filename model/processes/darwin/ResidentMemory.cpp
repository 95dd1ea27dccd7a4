#include "model/processes/darwin/ResidentMemory.h"

#include <cstring>

namespace tidewell {

std::optional<std::uint64_t> readResidentMemory(DarwinProcessHost& host, std::int32_t process) {
    TaskInformation record{};
    const int filled = host.readTaskInformation(process, record);
    if (filled != static_cast<int>(record.size())) {
        return std::nullopt;
    }
    std::uint64_t bytes = 0;
    static_assert(residentSizeOffset + sizeof bytes <= sizeof record);
    std::memcpy(&bytes, record.data() + residentSizeOffset, sizeof bytes);
    return bytes;
}

} // namespace tidewell
