#pragma once

#include <unistd.h>
#include <utility>

namespace pacelet {

/// A file descriptor that closes itself.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd)
        : fd_{fd} {}
    Descriptor(Descriptor&& other) noexcept
        : fd_{std::exchange(other.fd_, -1)} {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { reset(); }

    /// Negative when nothing is open.
    int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }

    /// Closes it; an error of the close is ignored.
    void reset() {
        if (fd_ >= 0) {
            ::close(std::exchange(fd_, -1));
        }
    }

    /// Hands the open descriptor over to the caller.
    int release() { return std::exchange(fd_, -1); }

private:
    int fd_ = -1;
};

} // namespace pacelet
