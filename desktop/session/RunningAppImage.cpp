#include "desktop/session/RunningAppImage.h"

#include <algorithm>
#include <cstdlib>

namespace tidewell {

std::filesystem::path runningAppImage() {
    // Whatever an AppImage starts inherits both variables, so they are ours only where the folder
    // is the one that this program lies in.
    const char* image = std::getenv("APPIMAGE");
    const char* folder = std::getenv("APPDIR");
    if (image == nullptr || *image != '/' || folder == nullptr || *folder != '/') {
        return {};
    }
    std::error_code error; // an empty path says as much
    const auto place = std::filesystem::canonical(folder, error);
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    const bool isInside = place.has_relative_path() && // not the root, where everything lies
                          std::ranges::mismatch(place, program).in1 == place.end();
    return isInside ? std::filesystem::path(image) : std::filesystem::path();
}

} // namespace tidewell
