#pragma once

#include "Platform/Posix/files/PosixFileManager.h"

namespace quillon {

/// The user's files, as the XDG base directories place them.
class LinuxFileManager final : public PosixFileManager {
  public:
    /// $XDG_DATA_HOME if it is an absolute path, else .local/share in the home folder.
    [[nodiscard]] std::optional<std::filesystem::path> applicationSupportDirectory() override;
    [[nodiscard]] std::filesystem::path temporaryDirectory() override;
};

} // namespace quillon
