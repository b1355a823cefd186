#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// What the systems have in different forms. Each system's folder defines all of it.

/// How a folder is opened of which only entries are to be named.
extern const int folderNamingFlags;

/// What a folder is told by, whatever becomes of its name.
struct FolderIdentity {
    unsigned long long device = 0;
    unsigned long long number = 0;

    bool operator==(const FolderIdentity&) const = default;
};

/// 0, or an error: EBUSY for a folder in which something is mounted.
[[nodiscard]] int identifyFolder(int folder, FolderIdentity& identity);

/// Whether an entry could not be unlinked, with this error, because it is a folder.
[[nodiscard]] bool isFolderInTheWay(int folder, const std::string& name, int error);

/// Gives an entry another name, which nothing must have: false with errno EEXIST. Nothing where the
/// file system cannot do it in one step.
[[nodiscard]] std::optional<bool> renameInOneStep(int folder, const std::string& name,
                                                  const std::string& newName);

/// Locks a file until it is closed, or its process ends: false with errno. The lock belongs to the
/// open file, so that it also tells threads of one process apart.
[[nodiscard]] bool lockFile(int file);

/// Puts what was written on the disk: false with errno.
[[nodiscard]] bool syncFile(int file);

/// What went wrong with a system call, in words.
[[nodiscard]] std::string systemError(std::string_view what, int error);

} // namespace quillon
