#include "Platform/Linux/x11/MonitoredButton.h"

#include "Platform/Linux/x11/ScrollNotch.h"

namespace quillon {

namespace {

MonitoredEvent scroll(unsigned button) {
    const ScrollNotch notch = notchOfButton(static_cast<std::uint8_t>(button), {});
    MonitoredEvent event{.type = EventType::scrollWheel};
    if (notch.axis == ScrollNotch::Axis::vertical) {
        event.deltaY = event.scrollingDeltaY = notch.direction;
    } else {
        event.deltaX = event.scrollingDeltaX = notch.direction;
    }
    return event;
}

/// The wheel's four buttons stand in the midst of the others, and count for nothing here.
MouseButton numberOf(unsigned button) {
    switch (button) {
    case 1:
        return MouseButton::left;
    case 2:
        return MouseButton::middle;
    case 3:
        return MouseButton::right;
    default:
        return static_cast<MouseButton>(button - 1 - wheelButtons.size());
    }
}

} // namespace

std::optional<MonitoredEvent> monitoredButton(unsigned button, bool isDown) {
    using enum EventType;
    if (button == 0 || (isWheelButton(button) && !isDown)) {
        return std::nullopt;
    }
    if (isWheelButton(button)) {
        return scroll(button);
    }
    MonitoredEvent event{.buttonNumber = numberOf(button)};
    switch (event.buttonNumber) {
    case MouseButton::left:
        event.type = isDown ? leftMouseDown : leftMouseUp;
        break;
    case MouseButton::right:
        event.type = isDown ? rightMouseDown : rightMouseUp;
        break;
    default:
        event.type = isDown ? otherMouseDown : otherMouseUp;
        break;
    }
    return event;
}

} // namespace quillon
