#pragma once

#include <chrono>
#include <iosfwd>
#include <span>

namespace quillon {

/// Has the running program show these volume levels, in percent, one every `pace`; they need not
/// be those of any volume. Answers the exit status: 0, or 1 with a line on `errors`.
///
/// settleSessionBus() must have been called.
int showLevelCommand(std::span<const double> percents, std::chrono::milliseconds pace,
                     std::ostream& errors);

} // namespace quillon
