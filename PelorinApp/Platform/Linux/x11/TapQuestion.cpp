#include "Platform/Linux/x11/TapQuestion.h"

namespace quillon {

EventType typeOf(const TapQuestion& question) {
    return std::holds_alternative<LeftPress>(question) ? EventType::leftMouseDown
                                                       : EventType::scrollWheel;
}

Point locationOf(const TapQuestion& question) {
    return std::visit([](const auto& each) { return each.location; }, question);
}

FieldEvent eventOf(const TapQuestion& question, Point location) {
    if (const auto* notch = std::get_if<ScrollNotch>(&question)) {
        return eventOfNotch(*notch, location);
    }
    return {EventType::leftMouseDown, location, MouseButton::left};
}

bool isTurned(const FieldEvent& event, const TapQuestion& question) {
    const auto* notch = std::get_if<ScrollNotch>(&question);
    return notch != nullptr && isTurned(event, *notch);
}

} // namespace quillon
