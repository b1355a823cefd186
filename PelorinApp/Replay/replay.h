#pragma once

#include <ostream>
#include <string>

namespace quillon {

/// The exit codes of the replay command.
enum ReplayResult : int {
    replayEqual = 0,     // also when there was nothing to compare
    replayDifferent = 1, // the output is not what the trace expects
    replayInvalid = 2,   // no such trace, or not one that can be run or compared
};

/// Runs the trace in a file and prints its output. With `check` it prints no output but how it
/// differs from what the trace expects. Complaints go to `err`, as `FILE:LINE:COLUMN: message`
/// where they are about a place in the trace.
[[nodiscard]] int replayCommand(const std::string& file, bool check, std::ostream& out,
                                std::ostream& err);

} // namespace quillon
