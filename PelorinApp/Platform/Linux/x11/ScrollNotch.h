#pragma once

#include "Platform/FieldEvent.h"
#include "Platform/Geometry.h"

#include <array>
#include <cstdint>

namespace quillon {

/// The wheel as X11 first knew it: buttons that are pressed and released at once per notch.
inline constexpr std::array<std::uint8_t, 4> wheelButtons{4, 5, 6, 7};

[[nodiscard]] constexpr bool isWheelButton(std::uint32_t button) {
    return button >= wheelButtons.front() && button <= wheelButtons.back();
}

/// One notch of scrolling, before the applications get it.
struct ScrollNotch {
    enum class Axis { vertical, horizontal };

    Axis axis = Axis::vertical;
    int direction = 1;       // 1 is up or right, -1 down or left
    bool continuous = false; // gathered from a touchpad's smooth scrolling

    /// The device did the opposite, and scrolls the other way because this program has told it to.
    bool isReversed = false;
    Point location;
};

/// The notch that a wheel button stands for, and the other way round.
[[nodiscard]] ScrollNotch notchOfButton(std::uint8_t button, Point location);
[[nodiscard]] std::uint8_t buttonOfNotch(const ScrollNotch& notch);

/// The same notch, the other way.
[[nodiscard]] ScrollNotch turned(ScrollNotch notch);

/// As the taps get it: lines for a wheel, points for a touchpad, in the direction that the device
/// took before this program had a hand in it. `location` is the notch's place
/// with the origin at the main screen's top left.
[[nodiscard]] FieldEvent eventOfNotch(const ScrollNotch& notch, Point location);

/// Whether the event, which was that of this notch and may have been rewritten, goes the other way
/// than the notch came.
[[nodiscard]] bool isTurned(const FieldEvent& event, const ScrollNotch& notch);

} // namespace quillon
