#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace tidewell {

/// Owns an open file descriptor, or none (-1). Closing leaves `errno` alone.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor)
        : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~FileDescriptor() { close(); }

    int get() const { return descriptor_; }
    bool isOpen() const { return descriptor_ >= 0; }

    void close() {
        if (isOpen()) {
            const int saved = errno;
            ::close(std::exchange(descriptor_, -1));
            errno = saved;
        }
    }

private:
    int descriptor_ = -1;
};

} // namespace tidewell
