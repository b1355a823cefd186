#pragma once

#include "Platform/Posix/files/FileDescriptor.h"

#include <filesystem>

namespace quillon {

/// Can be polled for files that appear in a folder.
class FolderWatch {
  public:
    /// Silent when there is no such folder.
    explicit FolderWatch(const std::filesystem::path& folder);

    /// To be polled for input; -1 when silent.
    [[nodiscard]] int descriptor() const { return descriptor_.get(); }

    /// Reads what has happened.
    void clear() const;

  private:
    FileDescriptor descriptor_;
};

} // namespace quillon
