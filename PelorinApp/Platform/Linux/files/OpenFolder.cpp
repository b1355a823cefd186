#include "Platform/Linux/files/OpenFolder.h"

#include "Platform/Linux/session/AtomicFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace quillon {

namespace {

FileError failed(std::string_view what, const std::filesystem::path& path, int error) {
    return {systemError(std::string(what) + " " + path.string(), error)};
}

FileError notAName() { return {"this cannot be the name of a file"}; }

std::filesystem::path within(const FileDescriptor& folder, std::string_view name) {
    return std::filesystem::path("/proc/self/fd") / std::to_string(folder.get()) / name;
}

} // namespace

FileResult<std::unique_ptr<Folder>> OpenFolder::makeFolder(std::string_view name) {
    if (!isEntryName(name)) {
        return notAName();
    }
    const std::string entry(name);
    if (::mkdirat(folder_.get(), entry.c_str(), 0700) != 0 && errno != EEXIST) {
        return failed("cannot make the folder", path_ / name, errno);
    }
    FileDescriptor opened(
        ::openat(folder_.get(), entry.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!opened.isOpen()) {
        return failed("cannot make the folder", path_ / name, errno);
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
    const FileDescriptor file(::openat(folder_.get(), std::string(name).c_str(),
                                       O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat info {};
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0) {
        return failed("cannot read", path_ / name, errno);
    }
    if (!S_ISREG(info.st_mode)) {
        return failed("cannot read", path_ / name, EISDIR);
    }
    std::string content;
    std::string buffer(std::size_t{64} << 10U, '\0');
    while (content.size() <= largest) {
        const ssize_t got = ::read(file.get(), buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return failed("cannot read", path_ / name, errno);
        }
        if (got == 0) {
            return content;
        }
        content.append(buffer, 0, static_cast<std::size_t>(got));
    }
    return failed("cannot read", path_ / name, EFBIG);
}

std::optional<FileError> OpenFolder::write(std::string_view name, std::string_view content) {
    if (!isEntryName(name)) {
        return notAName();
    }
    AtomicFile file(within(folder_, name));
    auto failure = file.write(content);
    if (!failure) {
        failure = file.commit();
    }
    return failure ? std::optional(FileError{std::move(*failure)}) : std::nullopt;
}

std::optional<FileError> OpenFolder::rename(std::string_view name, std::string_view newName) {
    if (!isEntryName(name) || !isEntryName(newName)) {
        return notAName();
    }
    if (::renameat(folder_.get(), std::string(name).c_str(), folder_.get(),
                   std::string(newName).c_str()) != 0) {
        return failed("cannot rename", path_ / name, errno);
    }
    return std::nullopt;
}

std::optional<FileError> OpenFolder::keep(std::string_view name, std::string_view keptName) {
    if (!isEntryName(name) || !isEntryName(keptName)) {
        return notAName();
    }
    ::unlinkat(folder_.get(), std::string(keptName).c_str(), 0);
    if (::linkat(folder_.get(), std::string(name).c_str(), folder_.get(),
                 std::string(keptName).c_str(), 0) == 0) {
        return std::nullopt;
    }
    return rename(name, keptName);
}

std::optional<FileError> OpenFolder::remove(std::string_view name) {
    if (!isEntryName(name)) {
        return notAName();
    }
    std::error_code error;
    std::filesystem::remove_all(within(folder_, name), error);
    return error ? std::optional(failed("cannot remove", path_ / name, error.value()))
                 : std::nullopt;
}

} // namespace quillon
