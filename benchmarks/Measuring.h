#pragma once

#include "base/ports/Log.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

// What the benchmarks measure with.

namespace tidewell {

class SilentLog final : public Log {
public:
    bool isEnabled(LogLevel) const override { return false; }
    void write(const LogRecord&) override {}
};

template <typename Work>
double microseconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::micro> passed =
        std::chrono::steady_clock::now() - start;
    return passed.count();
}

/// Of at least one value.
inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// A figure of this process's memory in kilobytes, such as "Rss", exactly as the kernel has it now;
/// 0 where that does not tell.
inline double ownMemory(const std::string& figure) {
    std::ifstream text("/proc/self/smaps_rollup");
    for (std::string word; text >> word;) {
        if (word == figure + ":") {
            double kilobytes = 0;
            text >> kilobytes;
            return kilobytes;
        }
    }
    return 0;
}

/// Runs the jobs of two executors in turns until neither has any.
template <typename One, typename Other>
void settle(One& one, Other& other) {
    while (one.drain() + other.drain() > 0) {
    }
}

} // namespace tidewell
