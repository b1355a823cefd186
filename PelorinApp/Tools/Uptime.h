#pragma once

#include "Platform/RunLoop.h"

#include <chrono>
#include <cmath>

namespace quillon {

/// A moment by the clock that nobody sets, in the whole microseconds that intervals between events
/// are measured in: with fractions of seconds 85 ms would now be more and now be less than 0.085.
using Moment = std::chrono::microseconds;

[[nodiscard]] inline Moment momentNow(const RunLoop& runLoop) {
    constexpr double microsecondsPerSecond = 1e6;
    return Moment(std::llround(runLoop.uptime() * microsecondsPerSecond));
}

} // namespace quillon
