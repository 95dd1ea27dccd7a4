#include "desktop/files/UserFolders.h"

#include <cstdlib>

#include <pwd.h>
#include <unistd.h>

namespace tidewell {

std::filesystem::path homeFolder() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home == '/') {
        return home;
    }
    const passwd* user = ::getpwuid(::getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

std::filesystem::path configurationFolder() {
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    return configuration != nullptr && *configuration == '/' ? std::filesystem::path(configuration)
                                                             : homeFolder() / ".config";
}

} // namespace tidewell
