#include "desktop/files/RunningProgram.h"

#include <algorithm>
#include <cstdlib>

namespace tidewell {

std::filesystem::path runningProgram() {
    std::error_code error; // an empty path says as much
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::filesystem::path runningAppImage() {
    // Whatever an AppImage starts inherits both variables, so they are ours only where APPDIR is
    // a folder above this executable.
    const char* image = std::getenv("APPIMAGE");
    const char* folder = std::getenv("APPDIR");
    if (image == nullptr || *image != '/' || folder == nullptr || *folder != '/') {
        return {};
    }
    std::error_code error; // an empty path says as much
    const auto mount = std::filesystem::canonical(folder, error);
    const bool isInside = mount.has_relative_path() && // not the root, where everything lies
                          std::ranges::mismatch(mount, runningProgram()).in1 == mount.end();
    return isInside ? std::filesystem::path(image) : std::filesystem::path();
}

std::filesystem::path installedProgram() {
    auto image = runningAppImage();
    return image.empty() ? runningProgram() : image;
}

} // namespace tidewell
