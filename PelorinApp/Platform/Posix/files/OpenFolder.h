#pragma once

#include "Platform/FileManager.h"
#include "Platform/Posix/files/FileDescriptor.h"

#include <filesystem>
#include <string>

namespace quillon {

/// A folder by its descriptor: whatever becomes of its name, this is the folder that was opened.
class OpenFolder final : public Folder {
  public:
    /// `path` is for people.
    OpenFolder(FileDescriptor folder, std::filesystem::path path)
        : folder_(std::move(folder)), path_(std::move(path)) {}

    [[nodiscard]] FileResult<std::unique_ptr<Folder>> makeFolder(std::string_view name) override;
    [[nodiscard]] bool exists(std::string_view name) override;
    [[nodiscard]] FileResult<std::string> read(std::string_view name, std::size_t largest) override;
    [[nodiscard]] std::optional<FileError> write(std::string_view name,
                                                 std::string_view content) override;
    [[nodiscard]] std::optional<FileError> rename(std::string_view name,
                                                  std::string_view newName) override;
    [[nodiscard]] std::optional<FileError> keep(std::string_view name,
                                                std::string_view keptName) override;
    [[nodiscard]] std::optional<FileError> remove(std::string_view name) override;

  private:
    [[nodiscard]] std::optional<FileError> keepWithoutLink(std::string_view name,
                                                           std::string_view keptName);
    [[nodiscard]] std::optional<FileError> synchronise();

    FileDescriptor folder_;
    std::filesystem::path path_;
};

} // namespace quillon
