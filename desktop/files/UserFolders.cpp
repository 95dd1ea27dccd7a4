#include "desktop/files/UserFolders.h"

#include <cstdlib>
#include <string>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tidewell {

namespace {

bool isPrivate(const std::filesystem::path& folder) {
    struct stat status{};
    return folder.is_absolute() && ::lstat(folder.c_str(), &status) == 0 &&
           S_ISDIR(status.st_mode) && status.st_uid == ::getuid() &&
           (status.st_mode & ALLPERMS) == S_IRWXU;
}

std::filesystem::path homeFolder() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home == '/') {
        return home;
    }
    const passwd* user = ::getpwuid(::getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

} // namespace

std::filesystem::path runtimeFile(std::string_view name) {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && isPrivate(runtime)) {
        return std::filesystem::path(runtime) / name;
    }
    const std::filesystem::path own = "/tmp/tidewell-" + std::to_string(::getuid());
    ::mkdir(own.c_str(), S_IRWXU); // whether it is there and ours is checked in any case
    return isPrivate(own) ? own / name : std::filesystem::path();
}

std::filesystem::path configurationFolder() {
    const char* configuration = std::getenv("XDG_CONFIG_HOME");
    return configuration != nullptr && *configuration == '/' ? std::filesystem::path(configuration)
                                                             : homeFolder() / ".config";
}

} // namespace tidewell
