#include "Platform/Linux/x11/ScrollNotch.h"

namespace quillon {

namespace {
/// What one notch of a touchpad is in points: as far as a line scrolls elsewhere.
constexpr double pointsPerNotch = 10;

enum WheelButton : std::uint8_t { up = 4, down = 5, left = 6, right = 7 };

/// The one that says how far it went.
EventField fieldOfNotch(const ScrollNotch& notch) {
    using enum EventField;
    if (notch.axis == ScrollNotch::Axis::vertical) {
        return notch.continuous ? scrollPointDeltaAxis1 : scrollLineDeltaAxis1;
    }
    return notch.continuous ? scrollPointDeltaAxis2 : scrollLineDeltaAxis2;
}
} // namespace

ScrollNotch notchOfButton(std::uint8_t button, Point location) {
    ScrollNotch notch;
    notch.axis = button == up || button == down ? ScrollNotch::Axis::vertical
                                                : ScrollNotch::Axis::horizontal;
    notch.direction = button == up || button == right ? 1 : -1;
    notch.location = location;
    return notch;
}

std::uint8_t buttonOfNotch(const ScrollNotch& notch) {
    if (notch.axis == ScrollNotch::Axis::vertical) {
        return notch.direction > 0 ? up : down;
    }
    return notch.direction > 0 ? right : left;
}

ScrollNotch turned(ScrollNotch notch) {
    notch.direction = -notch.direction;
    return notch;
}

FieldEvent eventOfNotch(const ScrollNotch& notch, Point location) {
    FieldEvent event(EventType::scrollWheel, location, MouseButton::left);
    const int direction = notch.isReversed ? -notch.direction : notch.direction;
    if (notch.continuous) {
        event.setDoubleValueField(EventField::scrollIsContinuous, 1);
    }
    event.setDoubleValueField(fieldOfNotch(notch),
                              notch.continuous ? pointsPerNotch * direction : direction);
    return event;
}

bool isTurned(const FieldEvent& event, const ScrollNotch& notch) {
    return event.doubleValueField(fieldOfNotch(notch)) * notch.direction < 0;
}

} // namespace quillon
