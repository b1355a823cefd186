#pragma once

#include "Tools/Edges/ScrollSample.h"

#include <cstdint>

namespace quillon {

/// A number of notches or steps as a person set it, rounded to the nearest whole (halves away from
/// zero) and clamped to 1…10. A value that is not finite or does not fit a 64-bit integer is a
/// programming error and stops the program.
[[nodiscard]] std::int64_t clampedSteps(double value);

/// Turns scroll events into discrete actions: one event is one notch, whatever its size. Precise
/// and line scrolling are counted apart.
class NotchAccumulator {
  public:
    enum class Action { none, positive, negative };

    /// Adds an event and says what it brings about; an action takes `threshold` notches off.
    Action add(const ScrollSample& sample, std::int64_t threshold);

    void reset();

    [[nodiscard]] double precise() const { return preciseScrollAccumulator_; }
    [[nodiscard]] double line() const { return lineScrollAccumulator_; }

  private:
    static Action addNotch(double& accumulator, double delta, std::int64_t threshold);

    double preciseScrollAccumulator_ = 0;
    double lineScrollAccumulator_ = 0;
};

} // namespace quillon
