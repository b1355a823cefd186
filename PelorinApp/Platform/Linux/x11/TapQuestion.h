#pragma once

#include "Platform/Linux/x11/ScrollNotch.h"

#include <variant>

namespace quillon {

/// A press of the left button, before the applications get it.
struct LeftPress {
    Point location;
};

/// What the taps are asked about: small enough to be copied about without an allocation.
using TapQuestion = std::variant<ScrollNotch, LeftPress>;

[[nodiscard]] EventType typeOf(const TapQuestion& question);

/// Where the pointer is for it; the origin is the main screen's bottom left.
[[nodiscard]] Point locationOf(const TapQuestion& question);

/// As the taps get it. `location` is the same place with the origin at the main screen's top left.
[[nodiscard]] FieldEvent eventOf(const TapQuestion& question, Point location);

/// Whether the event, as the taps have left it, goes the other way than what they were asked about.
[[nodiscard]] bool isTurned(const FieldEvent& event, const TapQuestion& question);

} // namespace quillon
