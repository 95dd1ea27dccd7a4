#include "model/memory/probes/darwin/DarwinProbes.h"
#include "model/memory/probes/darwin/MacDarwinHost.h"

#include <cinttypes>
#include <cstdio>

// Prints the readings of the Mac it runs on: what tools/check-darwin links, and the first thing to
// try there.

namespace {

class StandardErrorLog final : public tidewell::Log {
public:
    bool isEnabled(tidewell::LogLevel) const override { return true; }
    void write(const tidewell::LogRecord& record) override {
        std::fprintf(stderr, "%.*s: %.*s\n", static_cast<int>(record.function.size()),
                     record.function.data(), static_cast<int>(record.message.size()),
                     record.message.data());
    }
};

} // namespace

int main() {
    StandardErrorLog log;
    tidewell::MacDarwinHost host;
    tidewell::DarwinProbes probes(host, log);
    if (const auto percentage = probes.getFreeMemoryPercentage()) {
        std::printf("free memory %" PRId64 " %%\n", *percentage);
    }
    if (const auto memory = probes.getPhysicalMemory()) {
        std::printf("physical memory %" PRIu64 " bytes\n", *memory);
    }
    if (const auto swap = probes.getSwapUsage()) {
        std::printf("swap %" PRIu64 " bytes, used %" PRIu64 ", free %" PRIu64 "\n", swap->total,
                    swap->used, swap->free);
    }
    if (const auto counters = probes.getMemoryCounters()) {
        std::printf("pages of %" PRIu64 " bytes: internal %" PRIu32 ", purgeable %" PRIu32
                    ", external %" PRIu32 ", wired %" PRIu32 ", compressor %" PRIu32 "\n",
                    counters->pageSize, counters->internalPages, counters->purgeablePages,
                    counters->externalPages, counters->wiredPages, counters->compressorPages);
    }
}
