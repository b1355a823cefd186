#include "Platform/Linux/updates/UpdateSchedule.h"

#include <limits>
#include <utility>

namespace quillon {

namespace {
constexpr double hour = 3600;
constexpr double day = 24 * hour;
} // namespace

UpdateSchedule::UpdateSchedule(RunLoop& runLoop, UserDefaults& defaults, Diagnostics& diagnostics,
                               std::function<bool()> check)
    : runLoop_(runLoop), defaults_(defaults), diagnostics_(diagnostics), check_(std::move(check)) {}

void UpdateSchedule::start() {
    if (timer_) {
        return;
    }
    timer_ = runLoop_.asyncAfter(firstDelay, [this] {
        timer_ = runLoop_.scheduleRepeating(interval, [this] { tick(); });
        tick();
    });
}

void UpdateSchedule::stop() {
    if (timer_) {
        timer_->cancel();
        timer_.reset();
    }
}

double UpdateSchedule::wallTime() const {
    return std::chrono::duration<double>(runLoop_.now().time_since_epoch()).count();
}

bool UpdateSchedule::isDue() const {
    if (lastUptime_ && runLoop_.uptime() - *lastUptime_ >= day) {
        return true;
    }
    constexpr double never = -std::numeric_limits<double>::infinity();
    const double since = wallTime() - doubleForKey(defaults_, lastCheckKey, never, diagnostics_);
    // A clock that is corrected a little is no reason to check again.
    return since >= day || since < -hour;
}

void UpdateSchedule::tick() {
    if (isDue() && check_()) {
        // Written when the check begins, so that one that fails, or ends the program, is not tried
        // over and over.
        defaults_.set(lastCheckKey, wallTime());
        lastUptime_ = runLoop_.uptime();
    }
}

} // namespace quillon
