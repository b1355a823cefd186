#include "Platform/Button.h"

#include <utility>

namespace quillon {

void Button::setLook(ButtonLook look) {
    look_ = std::move(look);
    setNeedsDisplay();
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
