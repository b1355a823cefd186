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
    Point location;
};

/// The notch that a wheel button stands for, and the other way round.
[[nodiscard]] ScrollNotch notchOfButton(std::uint8_t button, Point location);
[[nodiscard]] std::uint8_t buttonOfNotch(const ScrollNotch& notch);

/// As the taps get it: lines for a wheel, points for a touchpad. `location` is the notch's place
/// with the origin at the main screen's top left.
[[nodiscard]] FieldEvent eventOfNotch(const ScrollNotch& notch, Point location);

} // namespace quillon
