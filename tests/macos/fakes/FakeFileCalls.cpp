#include "FakeFileCalls.h"

#include <sys/stdio.h>

#include <cerrno>
#include <cstdio>

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
