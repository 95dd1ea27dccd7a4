#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace tidewell {

/// Owns an open file descriptor, or none (-1). Its destructor leaves `errno` alone.
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
    ~FileDescriptor() {
        const int saved = errno;
        close();
        errno = saved;
    }

    int get() const { return descriptor_; }
    bool isOpen() const { return descriptor_ >= 0; }

    /// As close(2): -1 with the reason in `errno` where what was written may not have reached the
    /// file. The descriptor is gone in any case; 0 where there was none.
    int close() { return isOpen() ? ::close(std::exchange(descriptor_, -1)) : 0; }

private:
    int descriptor_ = -1;
};

} // namespace tidewell
