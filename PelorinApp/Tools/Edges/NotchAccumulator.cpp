#include "Tools/Edges/NotchAccumulator.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace quillon {

namespace {
constexpr double smallestLineDelta = 0.02;
constexpr double smallestPreciseDelta = 0.0001;
constexpr std::int64_t fewestSteps = 1;
constexpr std::int64_t mostSteps = 10;
} // namespace

std::int64_t clampedSteps(double value) {
    const double rounded = std::round(value);
    const bool fitsInteger = rounded >= -0x1p63 && rounded < 0x1p63;
    if (!fitsInteger) {
        std::abort();
    }
    return std::clamp(static_cast<std::int64_t>(rounded), fewestSteps, mostSteps);
}

NotchAccumulator::Action NotchAccumulator::add(const ScrollSample& sample, std::int64_t threshold) {
    Action action = Action::none;
    if (!sample.precise && std::fabs(sample.lineDelta) > smallestLineDelta) {
        action = addNotch(lineScrollAccumulator_, sample.lineDelta, threshold);
    } else if (std::fabs(sample.preciseDelta) > smallestPreciseDelta) {
        action = addNotch(preciseScrollAccumulator_, sample.preciseDelta, threshold);
    }
    if (sample.endsGesture) {
        reset();
    }
    return action;
}

NotchAccumulator::Action NotchAccumulator::addNotch(double& accumulator, double delta,
                                                    std::int64_t threshold) {
    const auto t = static_cast<double>(threshold);
    accumulator += delta > 0 ? 1.0 : -1.0;
    if (accumulator >= t) {
        accumulator -= t;
        return Action::positive;
    }
    if (accumulator <= -t) {
        accumulator += t;
        return Action::negative;
    }
    return Action::none;
}

void NotchAccumulator::reset() {
    preciseScrollAccumulator_ = 0;
    lineScrollAccumulator_ = 0;
}

} // namespace quillon
