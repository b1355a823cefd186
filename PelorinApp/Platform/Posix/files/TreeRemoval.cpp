#include "Platform/Posix/files/TreeRemoval.h"

#include "Platform/Posix/files/FileErrors.h"
#include "Platform/Posix/files/FolderCalls.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>

namespace quillon {

namespace {

constexpr mode_t usable = 0700;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// A folder to be emptied, made usable if its user has shut it.
FileDescriptor openToEmpty(int folder, const std::string& name) {
    const auto open = [&] {
        return FileDescriptor(retried([&] { return ::openat(folder, name.c_str(), folderFlags); }));
    };
    FileDescriptor opened = open();
    if (!opened.isOpen() && errno == EACCES &&
        ::fchmodat(folder, name.c_str(), usable, AT_SYMLINK_NOFOLLOW) == 0) {
        opened = open();
    }
    struct stat info {};
    if (opened.isOpen() && ::fstat(opened.get(), &info) == 0 && (info.st_mode & usable) != usable) {
        // Of no use in another user's folder, whose entries will say so.
        [[maybe_unused]] const int ignored = ::fchmod(opened.get(), usable);
    }
    return opened;
}

/// That an entry is not any more what it was just now.
bool hasChanged(int error) { return error == ENOENT || error == ENOTDIR || error == ELOOP; }

} // namespace

std::optional<FileError> TreeRemoval::remove(const std::string& name) {
    int error = removeOrEnter(folder_, name);
    while (error == 0 && !entered_.empty()) {
        error = emptyFurther();
    }
    return error == 0 ? std::nullopt
                      : std::optional(fileError("cannot remove", failingPath(), error));
}

int TreeRemoval::removeOrEnter(int folder, const std::string& name) {
    for (;;) {
        failing_ = name;
        if (::unlinkat(folder, name.c_str(), 0) == 0 || errno == ENOENT) {
            return 0;
        }
        if (const int refused = errno; !isFolderInTheWay(folder, name, refused)) {
            return refused;
        }
        const int error = enter(folder, name);
        if (!hasChanged(error) || --patience_ <= 0) {
            return error;
        }
    }
}

int TreeRemoval::enter(int folder, const std::string& name) {
    FileDescriptor opened = openToEmpty(folder, name);
    if (!opened.isOpen()) {
        return errno;
    }
    FolderIdentity identity;
    if (const int error = identifyFolder(opened.get(), identity)) {
        return error;
    }
    entered_.push_back({name, identity});
    current_ = std::move(opened);
    failing_.clear();
    return 0;
}

int TreeRemoval::emptyFurther() {
    FolderListing listing(current_.get());
    const std::size_t depth = entered_.size();
    while (const auto name = listing.next()) {
        const int error = removeOrEnter(current_.get(), *name);
        if (error != 0 || entered_.size() != depth) {
            return error;
        }
    }
    failing_.clear();
    return listing.error() != 0 ? listing.error() : leave();
}

int TreeRemoval::leave() {
    FileDescriptor above;
    if (entered_.size() > 1) {
        above =
            FileDescriptor(retried([&] { return ::openat(current_.get(), "..", folderFlags); }));
        FolderIdentity identity;
        if (!above.isOpen()) {
            return errno;
        }
        if (const int error = identifyFolder(above.get(), identity)) {
            return error;
        }
        if (identity != entered_[entered_.size() - 2].identity) {
            return ESTALE; // somebody has moved it to another place
        }
    }
    const int parent = above.isOpen() ? above.get() : folder_;
    const std::string name = entered_.back().name;
    if (::unlinkat(parent, name.c_str(), AT_REMOVEDIR) != 0 && errno != ENOENT) {
        const bool isFilledAgain = errno == ENOTEMPTY || errno == EEXIST;
        if (isFilledAgain && --patience_ > 0) {
            return 0;
        }
        if (errno != ENOTDIR) {
            return errno;
        }
        // Something else has its name now, which is to go as well.
        entered_.pop_back();
        current_ = std::move(above);
        return removeOrEnter(parent, name);
    }
    entered_.pop_back();
    current_ = std::move(above);
    return 0;
}

std::filesystem::path TreeRemoval::failingPath() const {
    std::filesystem::path path = path_;
    for (const auto& entered : entered_) {
        path /= entered.name;
        if (path.native().size() > PATH_MAX) { // nobody could read it
            return path_ / entered_.front().name;
        }
    }
    return failing_.empty() ? path : path / failing_;
}

} // namespace quillon
