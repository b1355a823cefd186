#include <sanitizer/lsan_interface.h>

/// A thread of the toolkit's that is still ending when the process does takes what OpenSSL keeps
/// for each thread with it, which looks like a leak.
extern "C" const char* __lsan_default_suppressions() { return "leak:libcrypto\n"; }
