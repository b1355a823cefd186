#pragma once

#include "Replay/StatementReader.h"

namespace quillon {

/// The latest moment that a trace may name: a day.
inline constexpr VirtualRunLoop::Microseconds latestTraceTime = 24LL * 60 * 60 * 1000 * 1000;

/// The time of a statement, `MS` or `+MS`, the latter counted from `previous`. A time is a whole
/// number of microseconds, so decimals of a millisecond beyond the third must be zeros.
[[nodiscard]] VirtualRunLoop::Microseconds statementTime(const StatementReader& reader,
                                                         const TraceWord& word,
                                                         VirtualRunLoop::Microseconds previous);

/// A time in milliseconds in the `%g` form where that is exact; else with all its digits and
/// without an exponent.
[[nodiscard]] std::string milliseconds(VirtualRunLoop::Microseconds time);

} // namespace quillon
