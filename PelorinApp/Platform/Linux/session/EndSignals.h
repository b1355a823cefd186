#pragma once

#include <csignal>

namespace quillon {

/// Keeps the signals that ask the program to end (SIGINT, SIGTERM, SIGHUP) from interrupting this
/// thread and those that it starts later, and answers which they are, for who waits for them.
sigset_t blockEndSignals();

} // namespace quillon
