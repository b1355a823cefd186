#pragma once

#include "Platform/Posix/files/FileDescriptor.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

namespace quillon {

/// An advisory lock that programs agree on; it ends with this object or with the process.
class FileLock {
  public:
    /// Waits no longer than `patience`; answers what went wrong. Makes the file and leaves it: a
    /// program that waits for it would else hold the lock of a file that nobody finds any more.
    [[nodiscard]] std::optional<std::string> acquire(const std::filesystem::path& file,
                                                     std::chrono::milliseconds patience);

    /// The same for who only reads: others who do may hold it at the same time. A file that is not
    /// there is not made, and there is nothing to wait for.
    [[nodiscard]] std::optional<std::string> acquireToRead(const std::filesystem::path& file,
                                                           std::chrono::milliseconds patience);

    /// Whether the last try failed because another program holds the lock.
    [[nodiscard]] bool isTaken() const { return isTaken_; }

    /// False also after a success because the file system has no locks.
    [[nodiscard]] bool held() const { return file_.isOpen(); }

  private:
    [[nodiscard]] std::optional<std::string> lock(FileDescriptor opened, int operation,
                                                  const std::filesystem::path& file,
                                                  std::chrono::milliseconds patience);

    FileDescriptor file_;
    bool isTaken_ = false;
};

} // namespace quillon
