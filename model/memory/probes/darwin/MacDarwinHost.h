#pragma once

#include "model/memory/probes/darwin/DarwinHost.h"

#include <mach/mach_types.h>

namespace tidewell {

/// The machine that the program runs on. Compiled for macOS only.
class MacDarwinHost final : public DarwinHost {
public:
    MacDarwinHost();
    ~MacDarwinHost() override;

    Result<ToolResult> runMemoryPressure() override;
    std::size_t sizeOfVariable(const char* name) override;
    VariableRead readVariable(const char* name, std::span<std::byte> buffer) override;
    std::optional<std::uint64_t> pageSize() override;
    std::optional<VmStatistics> vmStatistics() override;

private:
    ToolRunner memoryPressure_{"/usr/bin/memory_pressure"};
    // Asking for the port takes a reference each time, so it is asked for once.
    mach_port_t host_;
};

} // namespace tidewell
