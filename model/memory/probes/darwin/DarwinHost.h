#pragma once

#include "base/values/Interface.h"
#include "model/memory/probes/darwin/KernelRecords.h"
#include "model/memory/probes/darwin/ToolRunner.h"

namespace tidewell {

/// What the probes of a Darwin machine ask of its system library. Main thread; each call blocks
/// until it has its answer.
class DarwinHost : public Interface {
public:
    virtual Result<ToolResult> runMemoryPressure() = 0;

    /// Bytes of the value of a kernel variable; 0 when there is no such variable.
    virtual std::size_t sizeOfVariable(const char* name) = 0;

    struct VariableRead {
        int error;        ///< 0, or the error number with which the call failed
        std::size_t size; ///< bytes of `buffer` that were filled
    };
    /// Reads a kernel variable into `buffer`.
    virtual VariableRead readVariable(const char* name, std::span<std::byte> buffer) = 0;

    /// Bytes of a page.
    virtual std::optional<std::uint64_t> pageSize() = 0;

    /// Empty when the kernel does not give them.
    virtual std::optional<VmStatistics> vmStatistics() = 0;
};

} // namespace tidewell
