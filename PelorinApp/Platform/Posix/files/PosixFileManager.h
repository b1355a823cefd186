#pragma once

#include "Platform/FileManager.h"

namespace quillon {

/// Folders by path; where the user's are is each system's own business.
class PosixFileManager : public FileManager {
  public:
    [[nodiscard]] FileResult<std::unique_ptr<Folder>>
    makeFolder(const std::filesystem::path& path) final;
    [[nodiscard]] FileResult<std::unique_ptr<Folder>>
    openFolder(const std::filesystem::path& path) final;
};

} // namespace quillon
