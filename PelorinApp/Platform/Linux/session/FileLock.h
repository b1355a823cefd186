#pragma once

#include "Platform/Linux/session/FileDescriptor.h"

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

    /// False also after an acquire() that succeeded because the file system has no locks.
    [[nodiscard]] bool held() const { return file_.isOpen(); }

  private:
    FileDescriptor file_;
};

} // namespace quillon
