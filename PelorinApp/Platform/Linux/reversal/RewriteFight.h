#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>

namespace quillon {

/// Tells a person who changes a setting now and then from a program that will not have ours.
class RewriteFight {
  public:
    using Clock = std::chrono::steady_clock;

    /// Somebody has rewritten what we wrote. True when that was the third time within a few
    /// seconds.
    bool rewritten(Clock::time_point now) {
        const auto oldest = times_[next_];
        times_[next_] = now;
        next_ = (next_ + 1) % times_.size();
        return oldest && now - *oldest < few;
    }

  private:
    static constexpr std::chrono::seconds few{3};

    std::array<std::optional<Clock::time_point>, 2> times_; // the two before
    std::size_t next_ = 0;
};

} // namespace quillon
