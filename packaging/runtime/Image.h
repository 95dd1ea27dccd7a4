#pragma once

#include <cstddef>
#include <string>

namespace runtime {

/// A squashfs image within a file.
struct Image {
    std::string file;
    std::size_t offset; ///< in bytes
};

/// What follows the ELF program that is running, in the same file. Throws std::system_error.
Image imageBehindThisProgram();

/// Mounts the image on a folder, through FUSE, and serves it in a process of its own until nothing
/// of it is open any more; then the folder goes, too. The caller has to open something below the
/// folder before it gives up. False where FUSE is missing or refuses; the folder is left then.
bool mount(const Image& image, const std::string& folder);

/// Unpacks the image into a folder that exists. Throws std::system_error or std::runtime_error.
void unpack(const Image& image, const std::string& folder);

/// Removes the folder, in a process of its own, when this one has ended, whatever it executes until
/// then. Throws std::system_error.
void removeAtEnd(const std::string& folder);

/// Goes on as a process that nothing of the one that started it reaches: its own session, no
/// inherited descriptors but `kept`, which gets the number 3, no signal that ends a session.
void detach(int kept);

} // namespace runtime
