#pragma once

#include "Platform/RunLoop.h"

#include <functional>

namespace quillon {

/// A timer of the main run loop in its default mode. Main thread only.
[[nodiscard]] TimerRef scheduleRepeatingTimer(double seconds, std::function<void()> work);

} // namespace quillon
