#include "Platform/Linux/session/AtomicFile.h"

#include "Platform/Linux/session/FileDescriptor.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace quillon {

namespace {

constexpr std::string_view temporaryMark = ".tmp-";
constexpr std::string_view uniquePart = "XXXXXX";

int retried(auto&& call) {
    int result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

bool writeAll(int fd, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = ::write(fd, content.data(), content.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// A name is on the disk only when its folder is.
bool syncFolder(const std::filesystem::path& folder) {
    const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.isOpen()) {
        return errno == EACCES; // a folder that may be written but not read cannot be synchronised
    }
    // Some file systems do not know it for folders.
    return retried([&] { return ::fsync(opened.get()); }) == 0 || errno == EINVAL;
}

void copyAttributes(const std::filesystem::path& from, int to) {
    struct stat replaced {};
    if (::stat(from.c_str(), &replaced) != 0 || !S_ISREG(replaced.st_mode)) {
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
        syncFolder(folder.parent_path());
        return 0;
    }
    const int error = errno;
    std::error_code ignored;
    return error == EEXIST && std::filesystem::is_directory(folder, ignored) ? 0 : error;
}

} // namespace

AtomicFile::~AtomicFile() {
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

std::optional<std::string> AtomicFile::write(std::string_view content) {
    std::string name = path_.string();
    name += temporaryMark;
    name += uniquePart;
    const FileDescriptor file(::mkostemp(name.data(), O_CLOEXEC));
    if (!file.isOpen()) {
        return systemError("cannot make a file in " + path_.parent_path().string(), errno);
    }
    temporary_ = name;
    copyAttributes(path_, file.get());
    if (!writeAll(file.get(), content) || retried([&] { return ::fsync(file.get()); }) != 0) {
        return systemError("cannot write " + temporary_, errno);
    }
    return std::nullopt;
}

std::optional<std::string> AtomicFile::commit() {
    if (::rename(temporary_.c_str(), path_.c_str()) != 0) {
        return systemError("cannot replace " + path_.string(), errno);
    }
    temporary_.clear();
    if (!syncFolder(path_.parent_path())) {
        return systemError("cannot synchronise " + path_.parent_path().string(), errno);
    }
    return std::nullopt;
}

void AtomicFile::removeAbandoned(const std::filesystem::path& path) {
    const std::string prefix = path.filename().string() + std::string(temporaryMark);
    std::error_code error;
    std::filesystem::directory_iterator entry(path.parent_path(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.size() == prefix.size() + uniquePart.size() && name.starts_with(prefix)) {
            ::unlink(entry->path().c_str());
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
