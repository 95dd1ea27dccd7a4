// What the single file begins with: a program of its own, and behind it, in the same file, a
// squashfs image of the folders of an installation. It makes them available, by FUSE where there is
// FUSE, and becomes the AppRun in there, with the arguments that it was given.

#include "packaging/runtime/Image.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
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
