#include "Platform/Linux/x11/TapExchange.h"

#include <utility>

namespace quillon {

TapExchange::Question TapExchange::take(TapQuestion& question) {
    const std::scoped_lock lock(mutex_);
    switch (state_) {
    case State::asked:
        state_ = State::taken;
        question = question_;
        return Question::open;
    case State::expiredUnseen:
        state_ = State::idle;
        question = question_;
        return Question::expired;
    case State::idle:
    case State::taken:
    case State::expired:
        break;
    }
    return Question::none;
}

bool TapExchange::answer(Verdict verdict) {
    const std::scoped_lock lock(mutex_);
    const bool inTime = isStillAwaited();
    if (inTime) {
        verdict_ = verdict;
        answered_.notify_one();
    }
    if (inTime || state_ == State::expired) {
        state_ = State::idle; // else somebody has asked anew meanwhile, which is yet to be seen
    }
    return inTime;
}

bool TapExchange::isAwaited() {
    const std::scoped_lock lock(mutex_);
    return isStillAwaited();
}

/// By the clock, too: when the whole program was stopped, whoever waits has not yet noticed.
bool TapExchange::isStillAwaited() const { return state_ == State::taken && Clock::now() < limit_; }

} // namespace quillon
