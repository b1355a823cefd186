#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace quillon {

/// Owns an open file.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int fd) : fd_(fd) {}
    FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~FileDescriptor() {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }

    [[nodiscard]] int get() const { return fd_; }
    [[nodiscard]] bool isOpen() const { return fd_ >= 0; }

    /// Leaves it to the caller to close.
    [[nodiscard]] int release() { return std::exchange(fd_, -1); }

  private:
    int fd_ = -1;
};

/// The result of a call to the system, made again as often as a signal interrupts it.
template <class Call>
[[nodiscard]] auto retried(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

} // namespace quillon
