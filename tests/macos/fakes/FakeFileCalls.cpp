#include "FakeFileCalls.h"

#include <sys/stdio.h>

#include <cerrno>
#include <cstdio>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillon::fakes {

FakeFileCalls& fakeFileCalls() {
    static FakeFileCalls calls;
    return calls;
}

} // namespace quillon::fakes

extern "C" int renameatx_np(int fromfd, const char* from, int tofd, const char* to,
                            unsigned int flags) {
    auto& calls = quillon::fakes::fakeFileCalls();
    calls.lastRenameFlags = flags;
    if (calls.renameError != 0) {
        errno = calls.renameError;
        return -1;
    }
    return ::renameat2(fromfd, from, tofd, to, flags == RENAME_EXCL ? RENAME_NOREPLACE : 0U);
}

// As macOS, which has one error for folders and for what is protected.
extern "C" int unlinkat(int folder, const char* name, int flags) noexcept {
    const long result = ::syscall(SYS_unlinkat, folder, name, flags);
    if (result != 0 && errno == EISDIR) {
        errno = EPERM;
    }
    return static_cast<int>(result);
}
