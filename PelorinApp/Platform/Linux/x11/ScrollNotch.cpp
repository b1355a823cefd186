#include "Platform/Linux/x11/ScrollNotch.h"

namespace quillon {

namespace {
/// What one notch of a touchpad is in points: as far as a line scrolls elsewhere.
constexpr double pointsPerNotch = 10;

enum WheelButton : std::uint8_t { up = 4, down = 5, left = 6, right = 7 };
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

FieldEvent eventOfNotch(const ScrollNotch& notch, Point location) {
    using enum EventField;
    FieldEvent event(EventType::scrollWheel, location, MouseButton::left);
    const bool vertical = notch.axis == ScrollNotch::Axis::vertical;
    if (notch.continuous) {
        event.setDoubleValueField(scrollIsContinuous, 1);
        event.setDoubleValueField(vertical ? scrollPointDeltaAxis1 : scrollPointDeltaAxis2,
                                  pointsPerNotch * notch.direction);
    } else {
        event.setDoubleValueField(vertical ? scrollLineDeltaAxis1 : scrollLineDeltaAxis2,
                                  notch.direction);
    }
    return event;
}

} // namespace quillon
