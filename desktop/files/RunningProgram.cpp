#include "desktop/files/RunningProgram.h"

#include <algorithm>
#include <cstdlib>

namespace tidewell {

std::filesystem::path runningProgram() {
    std::error_code error; // an empty path says as much
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

bool runsBelow(const char* variable) {
    const char* const value = std::getenv(variable);
    if (value == nullptr || *value != '/') {
        return false;
    }
    std::error_code error; // an empty path says as much
    const auto folder = std::filesystem::canonical(value, error);
    return folder.has_relative_path() && // not the root, where everything lies
           std::ranges::mismatch(folder, runningProgram()).in1 == folder.end();
}

std::filesystem::path runningAppImage() {
    const char* const image = std::getenv("APPIMAGE");
    const bool isOurs = image != nullptr && *image == '/' && runsBelow("APPDIR");
    return isOurs ? std::filesystem::path(image) : std::filesystem::path();
}

std::filesystem::path installedProgram() {
    auto image = runningAppImage();
    return image.empty() ? runningProgram() : image;
}

} // namespace tidewell
