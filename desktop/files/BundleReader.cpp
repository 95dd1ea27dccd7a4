#include "desktop/files/BundleReader.h"

#include "base/values/ReadFile.h"
#include "desktop/files/RunningProgram.h"

#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <string>

namespace tidewell {

namespace {

constexpr std::size_t largestFile = 1U << 20U;

} // namespace

std::filesystem::path installedInfoFile() {
    return (runningProgram().parent_path() / TIDEWELL_DATA_FROM_PROGRAM / "Info.json")
        .lexically_normal();
}

Bundle readBundle(const std::filesystem::path& infoFile, Log& log) {
    Bundle::InfoDictionary info;
    const auto content = readFile(AT_FDCWD, infoFile.c_str(), largestFile);
    const auto document = nlohmann::json::parse(content.value_or(""), nullptr, false);
    if (!document.is_object()) {
        logError(log,
                 content ? infoFile.string() + " is not a JSON object"
                         : content.error().description(),
                 "readBundle()");
        return Bundle({});
    }
    for (const auto& [key, value] : document.items()) {
        if (value.is_string()) {
            info.emplace(key, value.get<std::string>());
        }
    }
    return Bundle(std::move(info));
}

std::string bundleIdentifier(const Bundle& bundle) {
    return bundle.identifier().value_or(TIDEWELL_IDENTIFIER);
}

} // namespace tidewell
