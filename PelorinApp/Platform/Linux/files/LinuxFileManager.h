#pragma once

#include "Platform/FileManager.h"

namespace quillon {

/// The user's files, as the XDG base directories place them.
class LinuxFileManager final : public FileManager {
  public:
    /// $XDG_DATA_HOME if it is an absolute path, else .local/share in the home folder.
    [[nodiscard]] std::optional<std::filesystem::path> applicationSupportDirectory() override;
    [[nodiscard]] std::filesystem::path temporaryDirectory() override;
    [[nodiscard]] FileResult<std::unique_ptr<Folder>>
    makeFolder(const std::filesystem::path& path) override;
    [[nodiscard]] FileResult<std::unique_ptr<Folder>>
    openFolder(const std::filesystem::path& path) override;
};

} // namespace quillon
