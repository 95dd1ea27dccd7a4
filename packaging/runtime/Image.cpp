#include "packaging/runtime/Image.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include <fcntl.h>
#include <link.h>
#include <unistd.h>

namespace runtime {

Image imageBehindThisProgram() {
    // By this name it is this very file, even when another one has taken its place.
    Image image{.file = "/proc/self/exe", .offset = 0};
    ElfW(Ehdr) header{};
    std::ifstream file(image.file, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(&header), sizeof header)) {
        throw std::system_error(errno, std::generic_category(), image.file);
    }
    // The section headers are what linkers and strip put last.
    image.offset = header.e_shoff + std::size_t{header.e_shnum} * header.e_shentsize;
    return image;
}

void detach(int kept) {
    setsid();
    // The end of a session reaches the program, which then saves; it must not lose its files first.
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE}) {
        std::signal(number, SIG_IGN);
    }
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(nothing, number);
    }
    dup2(kept, 3);
    close_range(4, ~0U, 0);
    if (chdir("/") != 0) {
        std::abort();
    }
}

} // namespace runtime
