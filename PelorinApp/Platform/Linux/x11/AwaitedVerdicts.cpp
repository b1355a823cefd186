#include "Platform/Linux/x11/AwaitedVerdicts.h"

#include <algorithm>
#include <utility>

namespace quillon {

AwaitedVerdicts::AwaitedVerdicts(CaughtPresses& caught,
                                 std::function<void(const MonitoredEvent&)> tell)
    : caught_(caught), tell_(std::move(tell)), self_(std::make_shared<AwaitedVerdicts*>(this)) {}

bool AwaitedVerdicts::mayBeConsumed(const Heard& heard) const {
    const EventType type = heard.event.type;
    return (type == EventType::leftMouseDown || type == EventType::scrollWheel) &&
           caught_.mayHaveCaught(heard.press.kind) && caught_.whenSettled;
}

void AwaitedVerdicts::add(const Heard& heard) {
    const bool mustWait = mayBeConsumed(heard);
    if (!mustWait && waiting_.empty() && !isAsking_) {
        tell(heard);
        return;
    }
    waiting_.push_back(heard);
    if (!isAsking_) {
        ask();
    }
}

void AwaitedVerdicts::clear() {
    waiting_.clear();
    consumed_.clear();
    asked_ = 0;
    ++question_;
    isAsking_ = false;
}

void AwaitedVerdicts::ask() {
    isAsking_ = true;
    asked_ = waiting_.size();
    caught_.whenSettled([weak = std::weak_ptr(self_), question = ++question_] {
        if (const auto self = weak.lock()) {
            (*self)->settled(question);
        }
    });
}

void AwaitedVerdicts::settled(std::uint64_t question) {
    if (question != question_) {
        return; // about what was forgotten
    }
    // Those behind them that nobody could consume need not wait, either.
    for (std::size_t left = std::exchange(asked_, 0);
         !waiting_.empty() && (left > 0 || !mayBeConsumed(waiting_.front()));
         left -= left > 0 ? 1 : 0) {
        const Heard heard = waiting_.front();
        waiting_.pop_front();
        settle(heard);
        if (question != question_) {
            return; // a listener has made an end of it
        }
    }
    isAsking_ = false;
    if (!waiting_.empty()) {
        ask();
    }
}

void AwaitedVerdicts::settle(const Heard& heard) {
    if (!mayBeConsumed(heard) || !caught_.claim(heard.press)) {
        tell(heard);
    } else if (heard.event.type == EventType::leftMouseDown) {
        std::erase(consumed_, heard.device);
        consumed_.push_back(heard.device);
    }
}

/// But for the release of a press that was consumed: of the device by us, and by the finger.
void AwaitedVerdicts::tell(const Heard& heard) {
    if (heard.event.type == EventType::leftMouseDown) {
        std::erase(consumed_, heard.device);
    } else if (heard.event.type == EventType::leftMouseUp &&
               std::find(consumed_.begin(), consumed_.end(), heard.device) != consumed_.end()) {
        return;
    }
    tell_(heard.event);
}

} // namespace quillon
