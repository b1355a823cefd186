#include "Platform/Posix/files/FolderCalls.h"

#include "Platform/Posix/files/FileCalls.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>

namespace quillon {

namespace {

/// The folder itself, to be read: the descriptor that names entries may be for nothing else.
FileDescriptor openedToRead(int folder) {
    return FileDescriptor(
        retried([&] { return ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
}

} // namespace

FileDescriptor openedFolder(const std::filesystem::path& path) {
    const char* name = path.empty() ? "." : path.c_str();
    return FileDescriptor(retried([&] { return ::open(name, folderNamingFlags); }));
}

FileDescriptor openedFolder(int folder, const std::string& name) {
    return FileDescriptor(
        retried([&] { return ::openat(folder, name.c_str(), folderNamingFlags | O_NOFOLLOW); }));
}

bool syncFolder(int folder) {
    const FileDescriptor opened = openedToRead(folder);
    if (!opened.isOpen()) {
        return errno == EACCES; // a folder that may be written but not read cannot be synchronised
    }
    // Some file systems do not know it for folders.
    return syncFile(opened.get()) || errno == EINVAL;
}

bool renameWithoutReplacing(int folder, const std::string& name, const std::string& newName) {
    if (const auto renamed = renameInOneStep(folder, name, newName)) {
        return *renamed;
    }
    struct stat info {};
    if (::fstatat(folder, newName.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0) {
        errno = EEXIST;
        return false;
    }
    return errno == ENOENT && ::renameat(folder, name.c_str(), folder, newName.c_str()) == 0;
}

FolderListing::FolderListing(int folder) {
    FileDescriptor opened = openedToRead(folder);
    stream_ = opened.isOpen() ? ::fdopendir(opened.get()) : nullptr;
    if (stream_ == nullptr) {
        error_ = errno;
    } else {
        [[maybe_unused]] const int owned = opened.release();
    }
}

FolderListing::~FolderListing() {
    if (stream_ != nullptr) {
        ::closedir(stream_);
    }
}

std::optional<std::string> FolderListing::next() {
    while (stream_ != nullptr) {
        errno = 0;
        const dirent* entry = ::readdir(stream_);
        if (entry == nullptr) {
            error_ = errno;
            return std::nullopt;
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            return std::string(name);
        }
    }
    return std::nullopt;
}

} // namespace quillon
