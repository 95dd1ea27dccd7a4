#pragma once

#include <cstdlib>

/// Ends a fuzzer, which then keeps its input, where something does not hold.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}
