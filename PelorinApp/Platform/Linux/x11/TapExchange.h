#pragma once

#include "Platform/Geometry.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace quillon {

/// A notch of a wheel without scroll axes, before the applications get it.
struct WheelPress {
    std::uint8_t button = 0;
    Point location;
};

enum class Verdict { pass, consume };

/// How the thread that holds the input puts one event to the main thread and waits, but never for
/// long: a main thread that is busy must not cost the user an event. One event at a time, no
/// allocation.
class TapExchange {
  public:
    explicit TapExchange(std::chrono::milliseconds patience) : patience_(patience) {}

    /// Holding thread: puts the question, calls `wakeMain`, and waits. When no answer comes in
    /// time the event passes and `timedOut` is true.
    template <class WakeMain>
    Verdict ask(const WheelPress& press, bool& timedOut, const WakeMain& wakeMain) {
        std::unique_lock lock(mutex_);
        press_ = press;
        state_ = State::asked;
        lock.unlock();
        wakeMain();
        lock.lock();
        timedOut = !answered_.wait_for(lock, patience_, [this] { return state_ == State::idle; });
        if (timedOut) {
            state_ = state_ == State::asked ? State::expiredUnseen : State::expired;
            return Verdict::pass;
        }
        return verdict_;
    }

    enum class Question { none, open, expired };

    /// Main thread: what there is to answer. `expired` says that an event has passed which nobody
    /// here has looked at.
    Question take(WheelPress& press);

    /// Main thread: answers what take() said was open. False when the answer came too late.
    bool answer(Verdict verdict);

    /// Main thread, between take() and answer(): whether somebody still waits.
    [[nodiscard]] bool isAwaited();

  private:
    enum class State {
        idle,
        asked,         // waiting to be seen by the main thread
        taken,         // the main thread is at it
        expired,       // given up while the main thread was at it
        expiredUnseen, // given up before the main thread saw it
    };

    const std::chrono::milliseconds patience_;
    std::mutex mutex_;
    std::condition_variable answered_;
    State state_ = State::idle;
    WheelPress press_;
    Verdict verdict_ = Verdict::pass;
};

} // namespace quillon
