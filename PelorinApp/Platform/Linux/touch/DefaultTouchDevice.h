#pragma once

#include "Platform/Linux/session/WakeUp.h"
#include "Platform/Linux/touch/TouchpadDirectory.h"
#include "Platform/TouchLibrary.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <thread>

namespace quillon {

/// The device that a touch library hands out: whatever touchpads there are.
///
/// No function throws. start() and stop() may be called on one thread and, moreover, by the
/// callback on the device's own. Stopped, it owns nothing, so that it need not be destroyed.
class DefaultTouchDevice {
  public:
    /// Null when there is no way to know of touchpads.
    using MakeDirectory = std::unique_ptr<TouchpadDirectory> (*)();

    explicit DefaultTouchDevice(MakeDirectory makeDirectory) : makeDirectory_(makeDirectory) {}
    DefaultTouchDevice(const DefaultTouchDevice&) = delete;
    DefaultTouchDevice& operator=(const DefaultTouchDevice&) = delete;
    ~DefaultTouchDevice() { stop(); }

    /// Whether there is a touchpad that may be read from, or none yet but one would be noticed.
    [[nodiscard]] bool isUsable() const noexcept;

    /// There is one at most; a new one takes the place of the old.
    void setCallback(ContactFrameCallback callback) { callback_ = callback; }

    /// Does nothing when it is not the one that is set.
    void removeCallback(ContactFrameCallback callback) {
        callback_.compare_exchange_strong(callback, nullptr);
    }

    /// The first frame comes soon, also when nothing touches. Does nothing when started.
    void start() noexcept;

    /// Waits for a callback that runs and for the thread to end, so that no frame comes any more;
    /// except when the callback itself calls, which is then the last one that it got.
    void stop() noexcept;

  private:
    [[nodiscard]] bool isOnOwnThread() const { return threadId_ == std::this_thread::get_id(); }
    [[nodiscard]] bool mayReport() const { return isStarted_ && !isJoined_; }
    void run() noexcept;
    void send(int contacts);
    void join();

    MakeDirectory makeDirectory_;
    std::atomic<ContactFrameCallback> callback_ = nullptr;
    std::atomic<bool> isStarted_ = false;
    std::atomic<bool> isJoined_ = false; // somebody waits for the thread to end
    std::atomic<std::thread::id> threadId_{};
    std::optional<WakeUp> wakeUp_;
    std::thread thread_;
    std::int32_t frames_ = 0;
    int contacts_ = 0; // of the last frame
};

} // namespace quillon
