// What the single file begins with: a program of its own, and behind it, in the same file, a
// squashfs image of the folders of an installation. It makes them available, by FUSE where there is
// FUSE, and becomes the AppRun in there, with the arguments that it was given.

#include "packaging/runtime/Image.h"

#include <compare>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

std::string makeFolder() {
    const char* const temporary = std::getenv("TMPDIR");
    std::string folder(temporary != nullptr && *temporary == '/' ? temporary : "/tmp");
    folder += "/.single-file-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), folder);
    }
    return folder;
}

/// Of the GNU C library.
struct Version {
    int major = 0;
    int minor = 0;
    auto operator<=>(const Version&) const = default;
};

std::string text(const Version& version) {
    return std::to_string(version.major) + '.' + std::to_string(version.minor);
}

/// This program is static, so another has to tell. Nothing where there is no GNU C library.
std::optional<Version> versionOfSystem() {
    Version version;
    FILE* const pipe = popen("getconf GNU_LIBC_VERSION 2>/dev/null", "re");
    if (pipe == nullptr) {
        return std::nullopt;
    }
    const int read = std::fscanf(pipe, "glibc %d.%d", &version.major, &version.minor);
    pclose(pipe);
    return read == 2 ? std::optional(version) : std::nullopt;
}

/// Throws where the system is older than the image needs, before the dynamic linker says so in a
/// dozen lines.
void checkSystem(const std::string& folder) {
    Version needed;
    char dot = 0;
    std::ifstream(folder + "/minimum-system") >> needed.major >> dot >> needed.minor;
    if (const auto version = versionOfSystem(); version && *version < needed) {
        throw std::runtime_error("this needs the GNU C library " + text(needed) +
                                 " or newer, and the system has " + text(*version));
    }
}

void run(char** arguments) {
    const runtime::Image image = runtime::imageBehindThisProgram();
    const std::string folder = makeFolder();
    if (!runtime::mount(image, folder)) {
        runtime::removeAtEnd(folder);
        runtime::unpack(image, folder);
    }
    const std::string program = folder + "/AppRun";
    // As long as this is open the image stays mounted. It is closed by a successful exec, when the
    // program itself is open, which is why AppRun may be no script.
    const int kept = open(program.c_str(), O_RDONLY | O_CLOEXEC);
    checkSystem(folder);
    setenv("APPIMAGE", std::filesystem::read_symlink("/proc/self/exe").c_str(), 1);
    setenv("APPDIR", folder.c_str(), 1);
    setenv("ARGV0", arguments[0], 1);
    setenv("OWD", std::filesystem::current_path().c_str(), 1);
    execv(program.c_str(), arguments);
    const std::error_code error(errno, std::generic_category());
    close(kept);
    throw std::system_error(error, program);
}

} // namespace

int main(int, char** arguments) {
    try {
        run(arguments);
    } catch (const std::exception& error) {
        std::cerr << (arguments[0] == nullptr ? "" : arguments[0]) << ": " << error.what() << '\n';
    }
    return EXIT_FAILURE;
}
