#pragma once

#include "Platform/Posix/files/FileDescriptor.h"

#include <dirent.h>
#include <filesystem>
#include <optional>
#include <string>

namespace quillon {

/// A folder to name entries by; nothing about it can be read. Links that lead to it are followed.
/// Not open, with errno, when there is none.
[[nodiscard]] FileDescriptor openedFolder(const std::filesystem::path& path);

/// The same, of an entry of another, which must not be a link.
[[nodiscard]] FileDescriptor openedFolder(int folder, const std::string& name);

/// Puts the names in a folder on the disk, where its file system can. False with errno.
[[nodiscard]] bool syncFolder(int folder);

/// Gives an entry another name, which nothing must have: false with errno EEXIST.
[[nodiscard]] bool renameWithoutReplacing(int folder, const std::string& name,
                                          const std::string& newName);

/// The names in a folder, one by one, in no order. What is removed meanwhile does no harm.
class FolderListing {
  public:
    explicit FolderListing(int folder);
    FolderListing(const FolderListing&) = delete;
    FolderListing& operator=(const FolderListing&) = delete;
    ~FolderListing();

    /// Nothing at the end, and when the folder cannot be read on: then with error().
    [[nodiscard]] std::optional<std::string> next();

    [[nodiscard]] int error() const { return error_; }

  private:
    DIR* stream_ = nullptr;
    int error_ = 0;
};

} // namespace quillon
