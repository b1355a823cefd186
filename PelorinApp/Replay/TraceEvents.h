#pragma once

#include "Platform/FieldEvent.h"
#include "Platform/Simulated/ActionNumber.h"
#include "Platform/WindowServer.h"
#include "Replay/Trace.h"

#include <array>
#include <string>

namespace quillon {

/// What a statement of a trace is as an event of the system.
[[nodiscard]] inline EventType eventType(const ButtonInput& input) {
    switch (input.button) {
    case MouseButton::left:
        return input.pressed ? EventType::leftMouseDown : EventType::leftMouseUp;
    case MouseButton::right:
        return input.pressed ? EventType::rightMouseDown : EventType::rightMouseUp;
    case MouseButton::middle:
        break;
    }
    return input.pressed ? EventType::otherMouseDown : EventType::otherMouseUp;
}

[[nodiscard]] inline EventType eventType(const TapsDisabled& disabled) {
    return disabled.byUser ? EventType::tapDisabledByUserInput : EventType::tapDisabledByTimeout;
}

[[nodiscard]] inline FieldEvent scrollEvent(const ScrollInput& scroll) {
    using enum EventField;
    FieldEvent event;
    event.setDoubleValueField(scrollLineDeltaAxis1, scroll.lineDeltaAxis1);
    event.setDoubleValueField(scrollLineDeltaAxis2, scroll.lineDeltaAxis2);
    event.setDoubleValueField(scrollFixedPointDeltaAxis1, scroll.fixedPointDeltaAxis1);
    event.setDoubleValueField(scrollFixedPointDeltaAxis2, scroll.fixedPointDeltaAxis2);
    event.setDoubleValueField(scrollPointDeltaAxis1, scroll.pointDeltaAxis1);
    event.setDoubleValueField(scrollPointDeltaAxis2, scroll.pointDeltaAxis2);
    event.setDoubleValueField(scrollIsContinuous, scroll.isContinuous ? 1 : 0);
    event.setDoubleValueField(scrollPhase, scroll.phase);
    event.setDoubleValueField(scrollMomentumPhase, scroll.momentumPhase);
    return event;
}

[[nodiscard]] inline WindowDescription windowDescription(const TraceWindow& window) {
    return {window.owner, window.ownerName, window.layer, window.frame, window.onScreen};
}

/// The delta fields of a scroll as `11=1 12=0 …`.
[[nodiscard]] inline std::string deltaText(const Event& event) {
    using enum EventField;
    static constexpr std::array fields{
        scrollLineDeltaAxis1,       scrollLineDeltaAxis2,  scrollFixedPointDeltaAxis1,
        scrollFixedPointDeltaAxis2, scrollPointDeltaAxis1, scrollPointDeltaAxis2,
    };
    std::string text;
    for (const EventField field : fields) {
        text += text.empty() ? "" : " ";
        text += std::to_string(static_cast<int>(field));
        text += '=' + actionNumber(event.doubleValueField(field));
    }
    return text;
}

} // namespace quillon
