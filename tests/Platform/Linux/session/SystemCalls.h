#pragma once

#include <string_view>

namespace quillon {

/// A call to the system that is about to be made.
struct SystemCall {
    std::string_view name;
    int fd = -1;           // of write, fsync and flock
    std::string_view data; // of write
};

/// Sees the calls that a program makes to write, fsync, flock, rename, renameat2 and unlink, and to
/// openat when it makes a file (as create), mkdirat, linkat, renameat and unlinkat (each as its
/// plain namesake), and makes them fail: it answers the error to fail with, or 0. Any thread.
using SystemCallHook = int (*)(const SystemCall& call);

/// Null for none. Linking SystemCalls.cpp puts it in front of the C library's functions.
void setSystemCallHook(SystemCallHook hook);

} // namespace quillon
