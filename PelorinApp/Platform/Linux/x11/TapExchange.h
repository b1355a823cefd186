#pragma once

#include "Platform/Linux/x11/TapQuestion.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace quillon {

/// What becomes of an event.
enum class Verdict {
    pass,
    passTurned, // a notch, the other way than it came
    consume,
};

/// How the thread that holds the input puts one event to the main thread and waits, but never for
/// long: a main thread that is busy must not cost the user an event. One event at a time, no
/// allocation.
class TapExchange {
  public:
    explicit TapExchange(std::chrono::milliseconds patience) : patience_(patience) {}

    /// Holding thread: puts the question, calls `wakeMain`, and waits; while it does, it calls
    /// `meanwhile` now and then. When no answer comes in time the event passes and `timedOut` is
    /// true.
    template <class WakeMain, class Meanwhile>
    Verdict ask(const TapQuestion& question, bool& timedOut, const WakeMain& wakeMain,
                const Meanwhile& meanwhile) {
        std::unique_lock lock(mutex_);
        question_ = question;
        state_ = State::asked;
        limit_ = Clock::now() + patience_;
        lock.unlock();
        wakeMain();
        lock.lock();
        const auto isAnswered = [this] { return state_ == State::idle; };
        for (timedOut = false; !isAnswered() && !timedOut;) {
            const auto now = Clock::now();
            timedOut = now >= limit_;
            if (!timedOut &&
                !answered_.wait_until(lock, std::min(limit_, now + turn), isAnswered)) {
                lock.unlock(); // the main thread must not wait for what is done meanwhile
                meanwhile();
                lock.lock();
            }
        }
        if (timedOut) {
            state_ = state_ == State::asked ? State::expiredUnseen : State::expired;
            return Verdict::pass;
        }
        return verdict_;
    }

    enum class Question { none, open, expired };

    /// Main thread: what there is to answer. `expired` says that this event has passed, and that
    /// nobody here has looked at it.
    Question take(TapQuestion& question);

    /// Main thread: answers what take() said was open. False when the answer came too late.
    bool answer(Verdict verdict);

    /// Main thread, between take() and answer(): whether somebody still waits.
    [[nodiscard]] bool isAwaited();

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds turn{50};

    [[nodiscard]] bool isStillAwaited() const;

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
    Clock::time_point limit_;
    TapQuestion question_;
    Verdict verdict_ = Verdict::pass;
};

} // namespace quillon
