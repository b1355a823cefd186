#include "Platform/Linux/session/DefaultsFile.h"

#include "Platform/Linux/session/FileLock.h"
#include "Platform/Posix/files/AtomicFile.h"
#include "Platform/Posix/files/FileCalls.h"
#include "Platform/Posix/files/FileDescriptor.h"
#include "Platform/Posix/files/FolderCalls.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>
#include <variant>

namespace quillon {

namespace {

constexpr std::chrono::milliseconds lockPatience(1500);

enum class State { missing, intact, damaged, unavailable };

struct Reading {
    State state;
    DefaultsDocument document;
    std::string reason; // of damaged and unavailable
};

/// Errors that say nothing about the file and may pass.
bool isTransient(int error) {
    return error == EMFILE || error == ENFILE || error == ENOMEM || error == EIO ||
           error == ESTALE || error == EINTR;
}

Reading unreadable(int error) {
    if (error == ENOENT || error == ENOTDIR) {
        return {State::missing, {}, {}};
    }
    return {isTransient(error) ? State::unavailable : State::damaged,
            {},
            systemError("cannot be read", error)};
}

Reading readStored(const std::filesystem::path& path) {
    // Opening a device or a named pipe can block or have effects of its own.
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        return unreadable(errno);
    }
    if (!S_ISREG(info.st_mode)) {
        return {State::damaged, {}, "is not a regular file"};
    }
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen()) {
        return unreadable(errno);
    }
    // One byte more than may be there, so that a file that is too large shows.
    std::string text;
    std::string buffer(std::size_t{64} << 10U, '\0');
    while (text.size() <= DefaultsFile::largestSize) {
        const std::size_t room = DefaultsFile::largestSize + 1 - text.size();
        const ssize_t got = ::read(file.get(), buffer.data(), std::min(room, buffer.size()));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return unreadable(errno);
        }
        if (got == 0) {
            break;
        }
        text.append(buffer, 0, static_cast<std::size_t>(got));
    }
    if (text.size() > DefaultsFile::largestSize) {
        return {State::damaged, {}, "is larger than 4 MiB"};
    }
    auto parsed = DefaultsDocument::parse(text);
    if (auto* damage = std::get_if<DefaultsDamage>(&parsed)) {
        return {State::damaged, {}, std::move(damage->reason)};
    }
    return {State::intact, std::get<DefaultsDocument>(std::move(parsed)), {}};
}

std::string warningOf(const std::filesystem::path& path, std::string_view reason) {
    std::string warning = "⚠️ The settings file ";
    warning += path.string();
    warning += ' ';
    warning += reason;
    return warning;
}

/// The file that the links at `path` lead to, which need not exist: what has been linked is
/// written where it is. Links in a circle, or to what is no file of ours such as a device, are in
/// the way themselves.
std::filesystem::path followLinks(const std::filesystem::path& path) {
    constexpr int mostLinks = 40; // as many as the system follows
    std::filesystem::path at = path;
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const auto target = std::filesystem::read_symlink(at, error);
        if (error) {
            struct stat info {};
            return ::stat(at.c_str(), &info) != 0 || S_ISREG(info.st_mode) ? at : path;
        }
        at = at.parent_path() / target;
    }
    return path;
}

bool apply(const DefaultsChanges& changes, DefaultsDocument& document) {
    bool changed = false;
    for (const auto& [key, object] : changes) {
        const auto change = object ? document.set(key, *object) : document.remove(key);
        changed = changed || change == DefaultsDocument::Change::made;
    }
    return changed;
}

/// Whether the file needs to be written for the changes; makes them in the reading.
bool applyTo(Reading& reading, const DefaultsChanges& changes, const DefaultsDocument& intact) {
    if (reading.state != State::damaged) {
        return apply(changes, reading.document);
    }
    reading.document = intact;
    apply(changes, reading.document);
    // Nothing is stored in a damaged file, so that there is nothing to remove either.
    return std::any_of(changes.begin(), changes.end(),
                       [](const auto& change) { return change.second.has_value(); });
}

/// Renames without ever replacing an earlier file.
bool renameAside(const std::filesystem::path& path) {
    constexpr int mostKept = 1000;
    for (int i = 1; i <= mostKept; ++i) {
        std::string aside = path.string() + ".damaged";
        if (i > 1) {
            aside += '-' + std::to_string(i);
        }
        if (renameWithoutReplacing(AT_FDCWD, path.string(), aside)) {
            return true;
        }
        if (errno != EEXIST) {
            return false;
        }
    }
    errno = EEXIST;
    return false;
}

} // namespace

DefaultsFile::Loaded DefaultsFile::load() {
    Reading reading = readStored(path_);
    Loaded loaded;
    if (reading.state == State::damaged || reading.state == State::unavailable) {
        damageKnown_ = reading.state == State::damaged;
        loaded.warning = warningOf(path_, reading.reason) + "; the defaults are used";
        if (damageKnown_) {
            *loaded.warning += ", and it will be kept aside when settings are written";
        }
    }
    intact_ = reading.document;
    loaded.document = std::move(reading.document);
    return loaded;
}

DefaultsFile::Updated DefaultsFile::update(const DefaultsChanges& changes) {
    Updated updated;
    const std::filesystem::path target = followLinks(path_);
    // Without the lock at first, so that what changes nothing leaves no trace.
    Reading reading = readStored(target);
    if (reading.state == State::unavailable || !applyTo(reading, changes, intact_)) {
        if (reading.state == State::unavailable) {
            updated.failure = "it " + reading.reason;
        }
        return updated;
    }
    updated.failure = replace(target, changes, updated);
    return updated;
}

std::optional<std::string> DefaultsFile::replace(const std::filesystem::path& target,
                                                 const DefaultsChanges& changes, Updated& updated) {
    // Behind a link the folder is somebody else's, and may be missing for a reason.
    if (target == path_) {
        if (auto failure = makeFolders(target.parent_path())) {
            return failure;
        }
    }
    FileLock lock;
    if (auto failure = lock.acquire(target.string() + ".lock", lockPatience)) {
        return failure;
    }
    if (lock.held()) {
        AtomicFile::removeAbandoned(target);
    }
    Reading reading = readStored(target);
    if (reading.state == State::unavailable) {
        return "it " + reading.reason;
    }
    if (applyTo(reading, changes, intact_)) {
        const std::string text = reading.document.serialise();
        if (text.size() > largestSize) {
            return "they would take more than 4 MiB";
        }
        AtomicFile file(target);
        if (auto failure = file.write(text)) {
            return failure;
        }
        if (reading.state == State::damaged) {
            if (!damageKnown_) {
                updated.warning = warningOf(path_, reading.reason) + "; it is kept aside";
                damageKnown_ = true;
            }
            if (!renameAside(target)) {
                return systemError("cannot keep the damaged file aside", errno);
            }
        }
        if (auto failure = file.commit()) {
            return failure;
        }
    }
    damageKnown_ = false;
    intact_ = std::move(reading.document);
    return std::nullopt;
}

} // namespace quillon
