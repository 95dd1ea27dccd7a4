#include "base/ports/BundleInformation.h"

namespace tidewell {

std::string applicationName(const Bundle& bundle) {
    return bundle.infoString("CFBundleName").value_or("Unknown");
}

std::string version(const Bundle& bundle) {
    return bundle.infoString("CFBundleShortVersionString").value_or("No version");
}

std::string buildNumber(const Bundle& bundle) {
    return bundle.infoString("CFBundleVersion").value_or("No build");
}

std::string copyright(const Bundle& bundle) {
    return bundle.infoString("NSHumanReadableCopyright")
        .value_or("No copyright information found.");
}

} // namespace tidewell
