// The least that watching can be: once a second, the files of a sampling step are read.
// The footprint benchmark measures Tidewell's processor time against it.

#include "benchmarks/StepFiles.h"

#include <ctime>

int main() {
    for (constexpr timespec second{1, 0};;) {
        tidewell::readTheFilesOfAStep();
        nanosleep(&second, nullptr);
    }
}
