// What a sampling step costs, and that a million of them leave nothing behind.
//
// The baseline is what cannot be avoided: opening, reading and closing the same files. Both sides
// are measured in turns, so that whatever else the machine does falls on both.

#include "core/MemoryWatcher.h"
#include "core/probes/linux/LinuxProbes.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace tidewell {
namespace {

class SilentLog final : public Log {
public:
    bool isEnabled(LogLevel) const override { return false; }
    void write(const LogRecord&) override {}
};

/// A watcher of the real machine in virtual time.
struct WatchedMachine {
    SilentLog log;
    LinuxProbes probes{"/proc", "/sys", log};
    MemoryUserDefaults defaults;
    ManualExecutor mainThread;
    ManualExecutor schedulerThread;
    ManualClock clock;
    std::shared_ptr<MemoryWatcher> watcher = std::make_shared<MemoryWatcher>(
        MemoryWatcher::Environment{probes, defaults, mainThread, schedulerThread, clock, log,
                                   [this] { return static_cast<double>(++samples); }},
        nullptr);
    std::int64_t samples = 0;

    void start() {
        spawn(mainThread, watcher->startPeriodicTask());
        settle();
    }
    void step() {
        clock.advance(1);
        settle();
    }

private:
    void settle() {
        while (mainThread.drain() + schedulerThread.drain() > 0) {
        }
    }
};

void readWhole(const char* path) {
    static std::array<char, 16384> buffer;
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file >= 0) {
        while (read(file, buffer.data(), buffer.size()) > 0) {
        }
        close(file);
    }
}

/// The files of one step, found in the same way.
void readTheSameFiles() {
    readWhole("/proc/meminfo");
    readWhole("/proc/spl/kstat/zfs/arcstats");
    if (access("/sys/class/zram-control", F_OK) != 0) {
        return;
    }
    DIR* directory = opendir("/sys/block");
    if (directory == nullptr) {
        return;
    }
    while (const dirent* entry = readdir(directory)) {
        if (std::strncmp(entry->d_name, "zram", 4) == 0) {
            std::array<char, 300> path{};
            std::snprintf(path.data(), path.size(), "/sys/block/%s/mm_stat", entry->d_name);
            readWhole(path.data());
        }
    }
    closedir(directory);
}

template <typename Work>
double microseconds(int count, Work work) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < count; ++i) {
        work();
    }
    const std::chrono::duration<double, std::micro> passed =
        std::chrono::steady_clock::now() - start;
    return passed.count() / count;
}

double median(std::vector<double> values) {
    std::ranges::nth_element(values,
                             values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

/// Kilobytes, from the kernel.
long residentMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            long kilobytes = 0;
            status >> kilobytes;
            return kilobytes;
        }
    }
    return 0;
}

void measureStep() {
    WatchedMachine machine;
    machine.start();
    for (int i = 0; i < 200; ++i) {
        machine.step(); // the histories are full from here on
    }
    std::vector<double> step;
    std::vector<double> baseline;
    for (int round = 0; round < 301; ++round) {
        baseline.push_back(microseconds(100, readTheSameFiles));
        step.push_back(microseconds(100, [&machine] { machine.step(); }));
    }
    const double stepTime = median(step);
    const double baselineTime = median(baseline);
    std::printf("sampling step, nothing on screen      %9.2f us\n"
                "  opening and reading the same files  %9.2f us\n"
                "  ratio                               %9.2f    (at most 2)\n",
                stepTime, baselineTime, stepTime / baselineTime);
}

void measureGrowth() {
    WatchedMachine machine;
    machine.start();
    constexpr int warmUp = 10'000;
    constexpr int steps = 1'000'000;
    for (int i = 0; i < warmUp; ++i) {
        machine.step();
    }
    const long before = residentMemory();
    for (int i = 0; i < steps; ++i) {
        machine.step();
    }
    const long afterwards = residentMemory();
    std::printf("resident after %d steps        %9ld kB\n"
                "  after %d more              %9ld kB\n"
                "  ratio                               %9.3f    (no growth: 1)\n",
                warmUp, before, steps, afterwards,
                static_cast<double>(afterwards) / static_cast<double>(before));
}

} // namespace
} // namespace tidewell

int main() {
    tidewell::measureStep();
    tidewell::measureGrowth();
}
