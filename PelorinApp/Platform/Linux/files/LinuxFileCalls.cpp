#include "Platform/Posix/files/FileCalls.h"

#include "Platform/Posix/files/FileDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillon {

// Also of a folder that may not be read.
const int folderNamingFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

int identifyFolder(int folder, FolderIdentity& identity) {
    struct statx info {};
    if (::statx(folder, "", AT_EMPTY_PATH, STATX_INO, &info) != 0) {
        return errno;
    }
    constexpr unsigned majorShift = 32;
    identity = {static_cast<unsigned long long>(info.stx_dev_major) << majorShift |
                    info.stx_dev_minor,
                info.stx_ino};
    return (info.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0 ? EBUSY : 0;
}

bool isFolderInTheWay(int /*folder*/, const std::string& /*name*/, int error) {
    return error == EISDIR;
}

std::optional<bool> renameInOneStep(int folder, const std::string& name,
                                    const std::string& newName) {
    if (::renameat2(folder, name.c_str(), folder, newName.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    return errno == EINVAL || errno == ENOSYS ? std::nullopt : std::optional(false);
}

bool lockFile(int file) {
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return ::fcntl(file, F_OFD_SETLK, &whole) == 0;
}

bool syncFile(int file) {
    return retried([&] { return ::fsync(file); }) == 0;
}

std::string systemError(std::string_view what, int error) {
    std::string text(what);
    text += ": ";
    text += strerrordesc_np(error) == nullptr ? "unknown error" : strerrordesc_np(error);
    return text;
}

} // namespace quillon
