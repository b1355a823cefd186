#pragma once

#include "Platform/Linux/x11/Watchdog.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace quillon {

/// Keeps a watchdog for as long as there is something to hold: starts it, starts another one when
/// it has ended, and says what is wrong with it, once.
class HolderGuard {
  public:
    using Clock = Watchdog::Clock;

    HolderGuard(std::filesystem::path program, std::function<void(std::string)> diagnostic)
        : program_(std::move(program)), diagnostic_(std::move(diagnostic)) {}

    /// Before something is taken. `window` belongs to the connection that takes it, and is there
    /// already. Does nothing when the watchdog runs, or one has failed a moment ago.
    void ensure(xcb_window_t window);

    [[nodiscard]] bool isRunning() const { return watchdog_ != nullptr; }

    /// Says how things are; false when the watchdog turns out to be gone.
    [[nodiscard]] bool tell(const WatchdogMessage& message) {
        return !watchdog_ || watchdog_->tell(message);
    }

    /// It is gone: what it should have guarded must be let go of.
    void lost();
    void sayLost() const;

    /// Readable when the watchdog has ended; -1 when there is none.
    [[nodiscard]] int descriptor() const { return watchdog_ ? watchdog_->descriptor() : -1; }

    /// When tell() is due again.
    [[nodiscard]] Clock::time_point nextTell() const {
        return watchdog_ ? watchdog_->nextTell() : Clock::time_point::max();
    }

  private:
    std::filesystem::path program_;
    std::function<void(std::string)> diagnostic_;
    std::unique_ptr<Watchdog> watchdog_;
    Clock::time_point nextTry_ = Clock::now();
    bool wasRefused_ = false;
    bool wasLost_ = false; // early in its life
};

} // namespace quillon
