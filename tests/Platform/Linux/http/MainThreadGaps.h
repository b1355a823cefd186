#pragma once

#include "Platform/RunLoop.h"

#include <chrono>

namespace quillon {

/// Measures for how long the main thread was kept from its run loop by what it did itself. Time for
/// which the machine was busy with others does not count.
class MainThreadGaps {
  public:
    explicit MainThreadGaps(RunLoop& loop);
    MainThreadGaps(const MainThreadGaps&) = delete;
    MainThreadGaps& operator=(const MainThreadGaps&) = delete;
    ~MainThreadGaps() { timer_->cancel(); }

    /// In seconds, up to now.
    [[nodiscard]] double longest();

  private:
    void measure();

    double last_;
    double longest_ = 0;
    TimerRef timer_;
};

/// What counts as a stall, in seconds. Sanitizers make everything slower.
#ifdef QUILLON_SANITIZED
inline constexpr double stall = 0.25;
#else
inline constexpr double stall = 0.05;
#endif

} // namespace quillon
