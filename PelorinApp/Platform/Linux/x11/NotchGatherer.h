#pragma once

#include <algorithm>
#include <cmath>

namespace quillon {

/// Gathers the fractions in which a scroll axis moves into whole notches.
///
/// What has been gathered is dropped when the direction turns: a person who turns round expects the
/// next whole notch to count, not the rest of one.
class NotchGatherer {
  public:
    /// Adds a movement, in notches; answers the whole notches that are complete now, with sign.
    int add(double notches) {
        if (!std::isfinite(notches)) {
            return 0;
        }
        if (notches * gathered_ < 0) {
            gathered_ = 0;
        }
        gathered_ += notches;
        // Fractions such as a third of a notch add up to a whole only nearly.
        constexpr double nearly = 1e-6;
        const double whole = std::clamp(std::trunc(gathered_ + std::copysign(nearly, gathered_)),
                                        -mostAtOnce, mostAtOnce);
        gathered_ -= whole;
        if (std::fabs(gathered_) < nearly || std::fabs(gathered_) >= 1) {
            gathered_ = 0;
        }
        return static_cast<int>(whole);
    }

  private:
    /// No hand turns a wheel further between two reports of it.
    static constexpr double mostAtOnce = 100;

    double gathered_ = 0;
};

} // namespace quillon
