#include "Platform/Posix/files/FileCalls.h"

#include "Platform/Posix/files/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/stdio.h>
#include <system_error>
#include <unistd.h>

namespace quillon {

const int folderNamingFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

int identifyFolder(int folder, FolderIdentity& identity) {
    struct stat info {};
    struct stat above {};
    if (::fstat(folder, &info) != 0 || ::fstatat(folder, "..", &above, 0) != 0) {
        return errno;
    }
    identity = {static_cast<unsigned long long>(info.st_dev),
                static_cast<unsigned long long>(info.st_ino)};
    return info.st_dev != above.st_dev ? EBUSY : 0;
}

bool isFolderInTheWay(int folder, const std::string& name, int error) {
    // Other entries are refused with the same error when they are protected.
    struct stat info {};
    return error == EPERM && ::fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(info.st_mode);
}

std::optional<bool> renameInOneStep(int folder, const std::string& name,
                                    const std::string& newName) {
    if (::renameatx_np(folder, name.c_str(), folder, newName.c_str(), RENAME_EXCL) == 0) {
        return true;
    }
    return errno == ENOTSUP || errno == EINVAL ? std::nullopt : std::optional(false);
}

bool lockFile(int file) { return ::flock(file, LOCK_EX | LOCK_NB) == 0; }

bool syncFile(int file) {
    // The plain call leaves the data in the drive's own memory; not every file system knows more.
    return retried([&] { return ::fcntl(file, F_FULLFSYNC); }) == 0 ||
           retried([&] { return ::fsync(file); }) == 0;
}

std::string systemError(std::string_view what, int error) {
    return std::string(what) + ": " + std::generic_category().message(error);
}

} // namespace quillon
