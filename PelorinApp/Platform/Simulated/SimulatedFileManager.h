#pragma once

#include "Platform/FileManager.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// Files in memory: regular ones, folders, and links, which lead nowhere.
class SimulatedFileManager final : public FileManager {
  public:
    enum class Kind { file, folder, link };
    struct Entry {
        Kind kind = Kind::file;
        std::string content = {};
    };

    [[nodiscard]] std::optional<std::filesystem::path> applicationSupportDirectory() override {
        return support;
    }
    [[nodiscard]] std::filesystem::path temporaryDirectory() override { return "/tmp"; }
    [[nodiscard]] FileResult<std::unique_ptr<Folder>>
    makeFolder(const std::filesystem::path& path) override;
    [[nodiscard]] FileResult<std::unique_ptr<Folder>>
    openFolder(const std::filesystem::path& path) override;

    /// The content of the file of this path, if there is one.
    [[nodiscard]] std::optional<std::string> content(const std::filesystem::path& path) const;

    /// Makes an entry, with the folders above it.
    void put(const std::filesystem::path& path, Entry entry);

    std::optional<std::filesystem::path> support = "/home/user/.local/share";
    std::map<std::filesystem::path, Entry> entries; // by whole path

    /// What changes something fails with this, from now on.
    std::optional<std::string> failure;
    int writes = 0; // that succeeded

  private:
    class SimulatedFolder;

    [[nodiscard]] bool isFolder(const std::filesystem::path& path) const;
};

} // namespace quillon
