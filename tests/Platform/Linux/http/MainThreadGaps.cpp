#include "MainThreadGaps.h"

#include <algorithm>
#include <fstream>

namespace quillon {

namespace {

constexpr double interval = 0.005; // seconds

/// Seconds in which this thread has run or slept: those that it waited for a processor are left
/// out.
double ownTime() {
    double ran = 0;
    double waited = 0;
    std::ifstream("/proc/thread-self/schedstat") >> ran >> waited;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count() - waited / 1e9;
}

} // namespace

MainThreadGaps::MainThreadGaps(RunLoop& loop)
    : last_(ownTime()), timer_(loop.scheduleRepeating(interval, [this] { measure(); })) {}

void MainThreadGaps::measure() {
    const double now = ownTime();
    longest_ = std::max(longest_, now - last_ - interval);
    last_ = now;
}

double MainThreadGaps::longest() {
    measure();
    return longest_;
}

} // namespace quillon
