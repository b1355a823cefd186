#pragma once

#include "Platform/Posix/files/PosixFileManager.h"

namespace quillon {

/// The user's files, in the places that the system names.
class MacFileManager final : public PosixFileManager {
  public:
    [[nodiscard]] std::optional<std::filesystem::path> applicationSupportDirectory() override;
    [[nodiscard]] std::filesystem::path temporaryDirectory() override;
};

} // namespace quillon
