#include "desktop/files/BundleReader.h"

#include "desktop/files/WholeFile.h"

#include <nlohmann/json.hpp>

#include <string>

namespace tidewell {

namespace {

constexpr std::size_t largestFile = 1U << 20U;

} // namespace

std::filesystem::path installedInfoFile() {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        return {};
    }
    return executable.parent_path().parent_path() / "share/tidewell/Info.json";
}

Bundle readBundle(const std::filesystem::path& infoFile, Log& log) {
    Bundle::InfoDictionary info;
    const auto content = readWholeFile(infoFile, largestFile);
    std::string problem;
    if (const auto* error = std::get_if<std::error_code>(&content)) {
        problem = error->message();
    } else {
        const auto document = nlohmann::json::parse(std::get<std::string>(content), nullptr, false);
        if (document.is_object()) {
            for (const auto& [key, value] : document.items()) {
                if (value.is_string()) {
                    info.emplace(key, value.get<std::string>());
                }
            }
        } else {
            problem = "it is not a JSON object";
        }
    }
    if (!problem.empty()) {
        logMessage(log, "Could not read " + infoFile.string() + ": " + problem, "general", __FILE__,
                   "readBundle(infoFile:log:)", __LINE__, LogLevel::error);
    }
    return Bundle(std::move(info));
}

std::string bundleIdentifier(const Bundle& bundle) {
    return bundle.identifier().value_or(TIDEWELL_IDENTIFIER);
}

} // namespace tidewell
