#include "SystemCalls.h"

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace quillon {

namespace {

std::atomic<SystemCallHook> installedHook = nullptr;

template <class... Arguments>
long callSystem(const SystemCall& call, long number, Arguments... arguments) {
    const SystemCallHook hook = installedHook;
    const int error = hook == nullptr ? 0 : hook(call);
    if (error != 0) {
        errno = error;
        return -1;
    }
    return ::syscall(number, arguments...);
}

} // namespace

void setSystemCallHook(SystemCallHook hook) { installedHook = hook; }

} // namespace quillon

// The C library's headers do not name the parameters so that they could be used.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

using quillon::callSystem;

ssize_t write(int fd, const void* data, std::size_t size) {
    return callSystem({"write", fd, {static_cast<const char*>(data), size}}, SYS_write, fd, data,
                      size);
}

int fsync(int fd) { return static_cast<int>(callSystem({"fsync", fd, {}}, SYS_fsync, fd)); }

// The name itself is taken by a structure.
int lockFile(int fd, int operation) noexcept __asm__("flock");
int lockFile(int fd, int operation) noexcept {
    return static_cast<int>(callSystem({"flock", fd, {}}, SYS_flock, fd, operation));
}

int openat(int folder, const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return static_cast<int>(
        (flags & O_CREAT) == 0
            ? ::syscall(SYS_openat, folder, path, flags, mode)
            : callSystem({"create", -1, {}}, SYS_openat, folder, path, flags, mode));
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    return static_cast<int>(callSystem({"mkdir", -1, {}}, SYS_mkdirat, folder, path, mode));
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    return static_cast<int>(
        callSystem({"link", -1, {}}, SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    return static_cast<int>(
        callSystem({"rename", -1, {}}, SYS_renameat, fromFolder, from, toFolder, to));
}

int rename(const char* from, const char* to) noexcept {
    return static_cast<int>(
        callSystem({"rename", -1, {}}, SYS_renameat, AT_FDCWD, from, AT_FDCWD, to));
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned int flags) noexcept {
    return static_cast<int>(
        callSystem({"renameat2", -1, {}}, SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

int unlink(const char* path) noexcept {
    return static_cast<int>(callSystem({"unlink", -1, {}}, SYS_unlinkat, AT_FDCWD, path, 0));
}

int unlinkat(int folder, const char* path, int flags) noexcept {
    return static_cast<int>(callSystem({"unlink", -1, {}}, SYS_unlinkat, folder, path, flags));
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
