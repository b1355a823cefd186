#pragma once

#include "Replay/Trace.h"

#include <string>
#include <vector>

namespace quillon {

/// Runs a trace that checkProperties has found nothing wrong with, in virtual time, and says what
/// the tools did: a line `<ms> <action>` for each action of a kind that the trace shows.
///
/// Order: the desktop is put up as the trace describes it, then the `tool` lines take effect in
/// the order of the file and the queues are drained, all at time 0. At each later moment the timers
/// that are due come first, oldest first, then the statements in the order of the file; the queues
/// are drained after each timer and each statement.
[[nodiscard]] std::vector<std::string> runTrace(const Trace& trace);

} // namespace quillon
