#pragma once

namespace quillon::fakes {

/// Calls on files that only macOS has, on the files of this system.
class FakeFileCalls {
  public:
    /// Fails every rename that must not replace anything, where it is not 0: an errno.
    int renameError = 0;
    unsigned lastRenameFlags = 0;

    void reset() { *this = {}; }
};

FakeFileCalls& fakeFileCalls();

} // namespace quillon::fakes
