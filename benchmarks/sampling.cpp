// What a sampling step costs, and that a million of them leave nothing behind.
//
// The baseline is what cannot be avoided: opening, reading and closing the same files. Both sides
// are measured in turns, so that whatever else the machine does falls on both.

#include "benchmarks/StepFiles.h"
#include "benchmarks/WatchedMachine.h"
#include "model/memory/probes/linux/LinuxProbes.h"

#include <cstdio>
#include <vector>

namespace tidewell {
namespace {

void readTheSameFiles(int steps) {
    for (int i = 0; i < steps; ++i) {
        readTheFilesOfAStep();
    }
}

/// A watcher of the real machine.
struct RealMachine {
    SilentLog log;
    LinuxProbes probes{"/proc", "/sys", log};
    WatchedMachine watched{probes};
};

void measureStep() {
    RealMachine machine;
    machine.watched.step(200); // the histories are full from here on
    constexpr int count = 100;
    std::vector<double> step;
    std::vector<double> baseline;
    for (int round = 0; round < 301; ++round) {
        baseline.push_back(microseconds([] { readTheSameFiles(count); }) / count);
        step.push_back(microseconds([&machine] { machine.watched.step(count); }) / count);
    }
    const double stepTime = median(step);
    const double baselineTime = median(baseline);
    std::printf("sampling step, nothing on screen      %9.2f us\n"
                "  opening and reading the same files  %9.2f us\n"
                "  ratio                               %9.2f    (at most 2)\n",
                stepTime, baselineTime, stepTime / baselineTime);
}

void measureGrowth() {
    RealMachine machine;
    constexpr int warmUp = 10'000;
    constexpr int steps = 1'000'000;
    machine.watched.step(warmUp);
    ownMemory("Rss"); // the first reading takes memory itself
    const double before = ownMemory("Rss");
    machine.watched.step(steps);
    const double afterwards = ownMemory("Rss");
    std::printf("resident after %d steps        %9.0f kB\n"
                "  after %d more              %9.0f kB\n"
                "  ratio                               %9.3f    (no growth: 1)\n",
                warmUp, before, steps, afterwards, afterwards / before);
}

} // namespace
} // namespace tidewell

int main() {
    tidewell::measureStep();
    tidewell::measureGrowth();
}
