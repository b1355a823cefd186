#include "Platform/Linux/session/FileLock.h"

#include "Platform/Posix/files/FileCalls.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <utility>

namespace quillon {

std::optional<std::string> FileLock::acquire(const std::filesystem::path& file,
                                             std::chrono::milliseconds patience) {
    isTaken_ = false;
    FileDescriptor opened(
        ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (!opened.isOpen()) {
        return systemError("cannot open " + file.string(), errno);
    }
    return lock(std::move(opened), LOCK_EX, file, patience);
}

std::optional<std::string> FileLock::acquireToRead(const std::filesystem::path& file,
                                                   std::chrono::milliseconds patience) {
    isTaken_ = false;
    FileDescriptor opened(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!opened.isOpen()) {
        return errno == ENOENT ? std::nullopt
                               : std::optional(systemError("cannot open " + file.string(), errno));
    }
    return lock(std::move(opened), LOCK_SH, file, patience);
}

std::optional<std::string> FileLock::lock(FileDescriptor opened, int operation,
                                          const std::filesystem::path& file,
                                          std::chrono::milliseconds patience) {
    using std::chrono::milliseconds;
    using std::chrono::steady_clock;

    const auto deadline = steady_clock::now() + patience;
    for (milliseconds pause(1);; pause = std::min(pause * 2, milliseconds(20))) {
        if (::flock(opened.get(), operation | LOCK_NB) == 0) {
            file_ = std::move(opened);
            return std::nullopt;
        }
        const int error = errno;
        if (error == ENOLCK || error == EOPNOTSUPP || error == ENOSYS) {
            return std::nullopt; // some network file systems; settings are worth more than a lock
        }
        if (error != EWOULDBLOCK && error != EINTR) {
            return systemError("cannot lock " + file.string(), error);
        }
        if (steady_clock::now() >= deadline) {
            isTaken_ = true;
            return "another program holds the lock of " + file.string();
        }
        std::this_thread::sleep_for(pause);
    }
}

} // namespace quillon
