#include "benchmarks/Measuring.h"
#include "desktop/files/FileUserDefaults.h"
#include "tests/fuzz/Require.h"

#include <fstream>

#include <unistd.h>

// Whatever lies in the store's place, what is set then is there in the next run, and what could be
// read before, too.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    const auto folder = std::filesystem::path("/dev/shm") / ("store-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    const auto file = folder / "defaults.json";
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    SilentLog log;
    FileUserDefaults before(file, log);
    const auto kept = before.value("a");
    before.set("set", 4.0);
    const FileUserDefaults after(file, log);
    require(after.value("set") == DefaultsValue(4.0) &&
            after.value("a").has_value() == kept.has_value());
    std::filesystem::remove_all(folder);
    return 0;
}
