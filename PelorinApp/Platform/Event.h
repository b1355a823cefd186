#pragma once

#include "Platform/Geometry.h"

#include <cstdint>
#include <memory>

namespace quillon {

/// Event types, with the numbers that the native event services of macOS use.
enum class EventType : std::uint32_t {
    leftMouseDown = 1,
    leftMouseUp = 2,
    rightMouseDown = 3,
    rightMouseUp = 4,
    systemDefined = 14,
    scrollWheel = 22,
    otherMouseDown = 25,
    otherMouseUp = 26,
    // Not events of the user: what a tap is told when the system has switched it off.
    tapDisabledByTimeout = 0xFFFFFFFE,
    tapDisabledByUserInput = 0xFFFFFFFF,
};

/// The bit of a type in a tap's mask of events of interest.
constexpr std::uint64_t eventMask(EventType type) {
    return std::uint64_t{1} << static_cast<std::uint32_t>(type);
}

enum class MouseButton : std::uint32_t { left = 0, right = 1, middle = 2 };

/// Numbered fields of a scroll event. Axis 1 is vertical (up is positive), axis 2 horizontal.
enum class EventField : int {
    scrollLineDeltaAxis1 = 11,
    scrollLineDeltaAxis2 = 12,
    scrollIsContinuous = 88,
    scrollFixedPointDeltaAxis1 = 93,
    scrollFixedPointDeltaAxis2 = 94,
    scrollPointDeltaAxis1 = 96,
    scrollPointDeltaAxis2 = 97,
    scrollPhase = 99,
    scrollMomentumPhase = 123,
};

/// An input event: one on its way to the applications, which is valid only during the callback that
/// receives it, or one that was made to be posted. A field that the event does not carry reads as
/// 0.
class Event {
  public:
    virtual ~Event() = default;

    /// The field as an integer: fractions are cut off toward zero, what no integer holds reads
    /// as 0.
    [[nodiscard]] virtual std::int64_t integerValueField(EventField field) const = 0;
    [[nodiscard]] virtual double doubleValueField(EventField field) const = 0;

    /// Rewrites the field in place: taps that run later and the applications see the new value.
    virtual void setDoubleValueField(EventField field, double value) = 0;

    /// Where the pointer is for it: points, origin at the main screen's top left.
    [[nodiscard]] virtual Point location() const = 0;
};
using EventRef = std::unique_ptr<Event>;

} // namespace quillon
