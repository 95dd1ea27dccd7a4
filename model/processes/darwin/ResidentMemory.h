#pragma once

#include "base/values/Interface.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tidewell {

/// What the kernel of a Darwin machine tells of a process's memory: its record of the task's
/// information.
using TaskInformation = std::array<std::byte, 96>;

/// Where that record has the resident memory, in bytes: an unsigned 64-bit number of bytes.
inline constexpr std::size_t residentSizeOffset = 8;

/// What the reading of processes asks of a Darwin machine's system library. Main thread.
class DarwinProcessHost : public Interface {
public:
    /// Fills in the task information of a process and returns how many bytes were filled in.
    virtual int readTaskInformation(std::int32_t process, std::span<std::byte> record) = 0;
};

/// Bytes of memory that the process has resident now. Empty unless the kernel fills in exactly the
/// whole record: the process has ended, or cannot be inspected.
std::optional<std::uint64_t> readResidentMemory(DarwinProcessHost& host, std::int32_t process);

} // namespace tidewell
