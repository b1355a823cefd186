#pragma once

#include "Platform/Platform.h"

#include <memory>
#include <utility>

namespace quillon {

inline constexpr double permissionCheckInterval = 2.0; // seconds
inline constexpr double monitorCheckInterval = 5.0;    // seconds

/// Asks the trust question here and now and posts the answer to the main queue, where `apply` gets
/// it if the owner still exists.
template <class Owner>
void checkAccessibilityPermission(Platform& platform, std::weak_ptr<Owner> owner,
                                  void (Owner::*apply)(bool granted)) {
    const bool granted = platform.accessibility.isProcessTrusted();
    platform.runLoop.async([owner = std::move(owner), apply, granted] {
        if (const auto alive = owner.lock()) {
            (alive.get()->*apply)(granted);
        }
    });
}

/// A repeating main-run-loop timer that calls `tick` while the owner exists.
template <class Owner>
TimerRef scheduleWeakly(Platform& platform, double seconds, std::weak_ptr<Owner> owner,
                        void (Owner::*tick)()) {
    return platform.runLoop.scheduleRepeating(seconds, [owner = std::move(owner), tick] {
        if (const auto alive = owner.lock()) {
            (alive.get()->*tick)();
        }
    });
}

inline void cancelTimer(TimerRef& timer) {
    if (timer) {
        std::exchange(timer, nullptr)->cancel();
    }
}

} // namespace quillon
