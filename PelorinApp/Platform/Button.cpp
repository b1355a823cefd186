#include "Platform/Button.h"

#include <utility>

namespace quillon {

void Button::setLook(ButtonLook look) {
    look_ = std::move(look);
    setNeedsDisplay();
}

void Button::setAction(Action action) {
    // Functions cannot be compared: any one may be another.
    action_ = std::move(action);
    setNeedsDisplay();
}

void Button::setSendsActionOn(std::uint64_t mask) {
    if (std::exchange(sendsActionOn_, mask) != mask) {
        setNeedsDisplay();
    }
}

void Button::setEnabled(bool enabled) {
    if (std::exchange(enabled_, enabled) != enabled) {
        setNeedsDisplay();
    }
}

void Button::setRefusesFirstResponder(bool refuses) {
    if (std::exchange(refusesFirstResponder_, refuses) != refuses) {
        setNeedsDisplay();
    }
}

void Button::receive(EventType event) {
    if (!enabled_ || (sendsActionOn_ & eventMask(event)) == 0) {
        return;
    }
    // A copy: what it does may replace it.
    const auto perform = action_.perform;
    if (perform) {
        perform(this);
    }
}

} // namespace quillon
