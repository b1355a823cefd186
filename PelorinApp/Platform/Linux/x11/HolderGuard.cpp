#include "Platform/Linux/x11/HolderGuard.h"

#include <utility>

namespace quillon {

namespace {

/// How long to wait before a watchdog that failed is tried again.
constexpr std::chrono::seconds pause{5};

} // namespace

void HolderGuard::ensure(xcb_window_t window) {
    if (watchdog_ || Clock::now() < nextTry_) {
        return;
    }
    watchdog_ = Watchdog::start(program_, window);
    nextTry_ = Clock::now() + pause;
    if (!watchdog_) {
        if (!std::exchange(wasRefused_, true)) {
            diagnostic_("⚠️ " + program_.string() +
                        " does not start; without it mice and touchpads are not held, and "
                        "edge gestures do not work with them");
        }
    } else if (std::exchange(wasRefused_, false)) {
        diagnostic_("✅ The watchdog runs again");
    }
}

void HolderGuard::lost() {
    watchdog_.reset();
    if (!std::exchange(wasLost_, Clock::now() < nextTry_)) {
        nextTry_ = Clock::now(); // the first that does not live long is replaced at once
    }
}

void HolderGuard::sayLost() const {
    diagnostic_("⚠️ The watchdog has ended; input is let go of until another one runs");
}

} // namespace quillon
