#pragma once

#include "model/processes/darwin/ResidentMemory.h"

namespace tidewell {

/// The machine that the program runs on. Compiled for macOS only.
class MacProcessHost final : public DarwinProcessHost {
public:
    int readTaskInformation(std::int32_t process, std::span<std::byte> record) override;
};

} // namespace tidewell
