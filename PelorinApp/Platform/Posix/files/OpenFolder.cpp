#include "Platform/Posix/files/OpenFolder.h"

#include "Platform/Posix/files/AtomicFile.h"
#include "Platform/Posix/files/FileErrors.h"
#include "Platform/Posix/files/FolderCalls.h"
#include "Platform/Posix/files/TreeRemoval.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillon {

namespace {

FileError notAName() { return {"this cannot be the name of a file"}; }

std::optional<FileError> asFileError(std::optional<std::string> failure) {
    return failure ? std::optional(fileError(std::move(*failure))) : std::nullopt;
}

/// Whether a refused second name means that there cannot be one: for a folder, on some file
/// systems, and of files that belong to others.
bool cannotHaveTwoNames(int error) {
    return error == EPERM || error == EMLINK || error == EOPNOTSUPP || error == ENOTSUP ||
           error == ENOSYS;
}

} // namespace

FileResult<std::unique_ptr<Folder>> OpenFolder::makeFolder(std::string_view name) {
    if (!isEntryName(name)) {
        return FileError{"this cannot be the name of a folder"};
    }
    const std::string entry(name);
    if (::mkdirat(folder_.get(), entry.c_str(), 0700) == 0) {
        [[maybe_unused]] const bool synchronised = syncFolder(folder_.get());
    } else if (errno != EEXIST) {
        return fileError("cannot make the folder", path_ / name, errno);
    }
    FileDescriptor opened = openedFolder(folder_.get(), entry);
    if (!opened.isOpen()) {
        return fileError("cannot make the folder", path_ / name, errno);
    }
    return std::make_unique<OpenFolder>(std::move(opened), path_ / name);
}

bool OpenFolder::exists(std::string_view name) {
    struct stat info {};
    return isEntryName(name) &&
           ::fstatat(folder_.get(), std::string(name).c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0;
}

FileResult<std::string> OpenFolder::read(std::string_view name, std::size_t largest) {
    if (!isEntryName(name)) {
        return notAName();
    }
    // To open a device can have effects of its own, so what it is is asked first.
    const std::string entry(name);
    struct stat info {};
    if (::fstatat(folder_.get(), entry.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
        return fileError("cannot read", path_ / name, errno);
    }
    FileDescriptor file;
    if (S_ISREG(info.st_mode)) {
        file = FileDescriptor(retried([&] {
            return ::openat(folder_.get(), entry.c_str(),
                            O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        }));
        if (!file.isOpen() || ::fstat(file.get(), &info) != 0) {
            return fileError("cannot read", path_ / name, errno);
        }
    }
    if (!S_ISREG(info.st_mode)) {
        return fileError("cannot read " + (path_ / name).string() + ": it is no regular file");
    }
    std::string content;
    std::string buffer(std::size_t{64} << 10U, '\0');
    while (content.size() <= largest) {
        const ssize_t got =
            retried([&] { return ::read(file.get(), buffer.data(), buffer.size()); });
        if (got < 0) {
            return fileError("cannot read", path_ / name, errno);
        }
        if (got == 0) {
            return content;
        }
        content.append(buffer, 0, static_cast<std::size_t>(got));
    }
    return fileError("cannot read", path_ / name, EFBIG);
}

std::optional<FileError> OpenFolder::write(std::string_view name, std::string_view content) {
    if (!isEntryName(name)) {
        return notAName();
    }
    AtomicFile::removeAbandoned(folder_.get(), std::string(name));
    AtomicFile file(folder_.get(), path_ / name);
    auto failure = file.write(content);
    return asFileError(failure ? std::move(failure) : file.commit());
}

std::optional<FileError> OpenFolder::rename(std::string_view name, std::string_view newName) {
    if (!isEntryName(name) || !isEntryName(newName)) {
        return notAName();
    }
    if (::renameat(folder_.get(), std::string(name).c_str(), folder_.get(),
                   std::string(newName).c_str()) != 0) {
        return fileError("cannot rename", path_ / name, errno);
    }
    return synchronise();
}

std::optional<FileError> OpenFolder::keep(std::string_view name, std::string_view keptName) {
    if (!isEntryName(name) || !isEntryName(keptName)) {
        return notAName();
    }
    if (::linkat(folder_.get(), std::string(name).c_str(), folder_.get(),
                 std::string(keptName).c_str(), 0) == 0) {
        return synchronise();
    }
    return cannotHaveTwoNames(errno) ? keepWithoutLink(name, keptName)
                                     : std::optional(fileError("cannot keep", path_ / name, errno));
}

std::optional<FileError> OpenFolder::keepWithoutLink(std::string_view name,
                                                     std::string_view keptName) {
    constexpr std::size_t largestCopied = std::size_t{64} << 20U; // bytes
    if (const auto result = read(name, largestCopied);
        const auto* content = std::get_if<std::string>(&result)) {
        AtomicFile copy(folder_.get(), path_ / keptName);
        auto failure = copy.write(*content);
        return asFileError(failure ? std::move(failure) : copy.commitWithoutReplacing());
    }
    if (!renameWithoutReplacing(folder_.get(), std::string(name), std::string(keptName))) {
        return fileError("cannot keep", path_ / name, errno);
    }
    return synchronise();
}

std::optional<FileError> OpenFolder::remove(std::string_view name) {
    if (!isEntryName(name)) {
        return notAName();
    }
    return TreeRemoval(folder_.get(), path_).remove(std::string(name));
}

std::optional<FileError> OpenFolder::synchronise() {
    return syncFolder(folder_.get()) ? std::nullopt
                                     : std::optional(fileError("cannot synchronise", path_, errno));
}

} // namespace quillon
