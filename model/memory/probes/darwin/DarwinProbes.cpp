#include "model/memory/probes/darwin/DarwinProbes.h"

#include "base/text/Utf8.h"
#include "model/memory/probes/darwin/FreeMemoryPercentage.h"

#include <algorithm>
#include <cerrno>
#include <vector>

namespace tidewell {

std::optional<std::int64_t> DarwinProbes::getFreeMemoryPercentage() {
    constexpr std::string_view function = "getFreeMemoryPercentage()";
    const auto result = host_.runMemoryPressure();
    if (!result) {
        logError(log_, "Failed to run memory_pressure: " + result.error().description(), function);
        return std::nullopt;
    }
    if (result->status != 0) {
        if (isUtf8(result->standardError)) {
            logError(log_, "Error running memory_pressure: " + result->standardError, function);
        }
        return std::nullopt;
    }
    if (!isUtf8(result->standardOutput)) {
        logError(log_, "Failed to decode memory_pressure output", function);
        return std::nullopt;
    }
    return parseFreeMemoryPercentage(result->standardOutput);
}

std::optional<SwapUsage> DarwinProbes::getSwapUsage() {
    constexpr std::string_view function = "getSwapUsage()";
    constexpr const char* variable = "vm.swapusage";
    const auto size = host_.sizeOfVariable(variable);
    if (size < 1) {
        logError(log_, "Error: Could not determine size for vm.swapusage", function);
        return std::nullopt;
    }
    std::vector<std::byte> record(size);
    const auto read = host_.readVariable(variable, record);
    const auto usage = read.error == 0
                           ? decodeSwapUsage(std::span(record).first(std::min(size, read.size)))
                           : std::nullopt;
    if (!usage) {
        // A record that is too short counts as a failed read, of which the kernel knows nothing.
        const int error = read.error != 0 ? read.error : EINVAL;
        logError(log_, "Error getting swap usage (errno: " + std::to_string(error) + ")", function);
    }
    return usage;
}

std::optional<std::uint64_t> DarwinProbes::getPhysicalMemory() {
    std::uint64_t bytes = 0;
    const auto read =
        host_.readVariable("hw.memsize", std::as_writable_bytes(std::span(&bytes, 1)));
    return read.error == 0 ? std::optional(bytes) : std::nullopt;
}

std::optional<MemoryCounters> DarwinProbes::getMemoryCounters() {
    const auto pageSize = host_.pageSize();
    if (!pageSize) {
        return std::nullopt;
    }
    const auto statistics = host_.vmStatistics();
    return statistics ? std::optional(decodeMemoryCounters(*pageSize, *statistics)) : std::nullopt;
}

} // namespace tidewell
