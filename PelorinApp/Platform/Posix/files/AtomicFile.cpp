#include "Platform/Posix/files/AtomicFile.h"

#include "Platform/Posix/files/FileCalls.h"
#include "Platform/Posix/files/FolderCalls.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <system_error>

namespace quillon {

namespace {

constexpr std::string_view temporaryMark = ".tmp-";
constexpr std::size_t uniqueLength = 6;

/// How the names of a file's temporaries begin. That of a long name is cut, or they would be no
/// names any more.
std::string temporaryPrefix(const std::string& name) {
    constexpr std::size_t longest = NAME_MAX - temporaryMark.size() - uniqueLength;
    return name.substr(0, longest) + std::string(temporaryMark);
}

std::string uniquePart() {
    constexpr std::string_view letters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::random_device random;
    std::uniform_int_distribution<std::size_t> any(0, letters.size() - 1);
    std::string unique(uniqueLength, ' ');
    std::ranges::generate(unique, [&] { return letters[any(random)]; });
    return unique;
}

/// Whether somebody takes, or has taken, a file that was just made for an abandoned one. Locks it
/// if not, where there are locks.
bool isTakenForAbandoned(const FileDescriptor& file) {
    if (!lockFile(file.get()) && (errno == EAGAIN || errno == EACCES)) {
        return true;
    }
    struct stat info {};
    return ::fstat(file.get(), &info) == 0 && info.st_nlink == 0;
}

bool writeAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written =
            retried([&] { return ::write(fd, content.data(), content.size()); });
        if (written <= 0) {
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void copyAttributes(int folder, const std::string& from, int to) {
    struct stat replaced {};
    if (::fstatat(folder, from.c_str(), &replaced, AT_SYMLINK_NOFOLLOW) != 0 ||
        !S_ISREG(replaced.st_mode)) {
        return;
    }
    // The owner differs when an administrator runs the program for a user, and nobody else may
    // give files away: a failure changes nothing.
    [[maybe_unused]] const int owner = ::fchown(to, replaced.st_uid, replaced.st_gid);
    constexpr mode_t permissions = 0777;
    constexpr mode_t usable = 0600;
    [[maybe_unused]] const int mode = ::fchmod(to, (replaced.st_mode & permissions) | usable);
}

/// 0 when the folder is there afterwards, else the error.
int makeFolder(const std::filesystem::path& folder) {
    if (::mkdir(folder.c_str(), 0700) == 0) {
        const FileDescriptor parent = openedFolder(folder.parent_path());
        [[maybe_unused]] const bool synchronised = parent.isOpen() && syncFolder(parent.get());
        return 0;
    }
    const int error = errno;
    std::error_code ignored;
    return error == EEXIST && std::filesystem::is_directory(folder, ignored) ? 0 : error;
}

} // namespace

AtomicFile::~AtomicFile() {
    if (!temporary_.empty()) {
        ::unlinkat(folder_, temporary_.c_str(), 0);
    }
}

bool AtomicFile::makeTemporary() {
    constexpr int mostTries = 100;
    const std::string prefix = temporaryPrefix(name());
    for (int i = 0; i < mostTries; ++i) {
        std::string made = prefix + uniquePart();
        FileDescriptor file(retried([&] {
            return ::openat(folder_, made.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        }));
        if (!file.isOpen() && errno != EEXIST) {
            return false;
        }
        if (file.isOpen() && !isTakenForAbandoned(file)) {
            file_ = std::move(file);
            temporary_ = std::move(made);
            return true;
        }
    }
    errno = EEXIST;
    return false;
}

std::optional<std::string> AtomicFile::write(std::string_view content) {
    if (folder_ < 0) {
        ownFolder_ = openedFolder(path_.parent_path());
        folder_ = ownFolder_.get();
    }
    if (folder_ < 0 || !makeTemporary()) {
        return systemError("cannot make a file in " + path_.parent_path().string(), errno);
    }
    copyAttributes(folder_, name(), file_.get());
    if (!writeAll(file_.get(), content) || !syncFile(file_.get())) {
        return systemError("cannot write " + path_.string(), errno);
    }
    return std::nullopt;
}

std::optional<std::string> AtomicFile::commit() {
    return committed(::renameat(folder_, temporary_.c_str(), folder_, name().c_str()) == 0);
}

std::optional<std::string> AtomicFile::commitWithoutReplacing() {
    return committed(renameWithoutReplacing(folder_, temporary_, name()));
}

std::optional<std::string> AtomicFile::committed(bool renamed) {
    if (!renamed) {
        return systemError("cannot replace " + path_.string(), errno);
    }
    temporary_.clear();
    file_ = FileDescriptor();
    if (!syncFolder(folder_)) {
        return systemError("cannot synchronise " + path_.parent_path().string(), errno);
    }
    return std::nullopt;
}

void AtomicFile::removeAbandoned(const std::filesystem::path& path) {
    if (const auto folder = openedFolder(path.parent_path()); folder.isOpen()) {
        removeAbandoned(folder.get(), path.filename());
    }
}

void AtomicFile::removeAbandoned(int folder, const std::string& name) {
    const std::string prefix = temporaryPrefix(name);
    FolderListing listing(folder);
    while (const auto entry = listing.next()) {
        if (entry->size() != prefix.size() + uniqueLength || !entry->starts_with(prefix)) {
            continue;
        }
        const FileDescriptor file(::openat(
            folder, entry->c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        struct stat info {};
        if (file.isOpen() && ::fstat(file.get(), &info) == 0 && S_ISREG(info.st_mode) &&
            lockFile(file.get())) {
            ::unlinkat(folder, entry->c_str(), 0);
        }
    }
}

std::optional<std::string> makeFolders(const std::filesystem::path& folder) {
    int error = makeFolder(folder);
    if (error == ENOENT && folder.has_relative_path()) {
        if (auto failure = makeFolders(folder.parent_path())) {
            return failure;
        }
        error = makeFolder(folder);
    }
    return error == 0
               ? std::nullopt
               : std::optional(systemError("cannot make the folder " + folder.string(), error));
}

} // namespace quillon
