#include "model/processes/darwin/MacProcessHost.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>

// Prints the resident memory of the processes whose numbers it is given, on a Mac: what
// tools/check-darwin links.

int main(int argc, char** argv) {
    tidewell::MacProcessHost host;
    for (int i = 1; i < argc; ++i) {
        const auto bytes = tidewell::readResidentMemory(host, std::atoi(argv[i]));
        std::printf("%s: %" PRIu64 " bytes\n", argv[i], bytes.value_or(0));
    }
}
