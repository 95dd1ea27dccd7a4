#pragma once

#include "model/memory/probes/SystemProbes.h"

#include <array>
#include <span>

namespace tidewell {

/// The value of the kernel variable "vm.swapusage", in the byte order of the machine. Empty when
/// it is too short to hold the three figures; what follows them is not looked at.
std::optional<SwapUsage> decodeSwapUsage(std::span<const std::byte> record);

/// The kernel's 64-bit statistics of virtual memory, as it fills them in: 32-bit words.
using VmStatistics = std::array<std::uint32_t, 38>;

/// Where the record has the counters that are used, in bytes.
namespace vm_statistics_offset {
inline constexpr std::size_t wireCount = 12;
inline constexpr std::size_t purgeableCount = 88;
inline constexpr std::size_t compressorPageCount = 128;
inline constexpr std::size_t externalPageCount = 136;
inline constexpr std::size_t internalPageCount = 140;
} // namespace vm_statistics_offset

/// `pageSize` in bytes.
MemoryCounters decodeMemoryCounters(std::uint64_t pageSize, const VmStatistics& statistics);

} // namespace tidewell
