#pragma once

#include "Platform/Geometry.h"

#include <span>

namespace quillon {

/// Which edges of the screen are armed, and how wide the band along each is.
struct EdgeBand {
    double width = 0; // points
    bool left = false;
    bool right = false;
    bool top = false;
    bool bottom = false;

    [[nodiscard]] bool isArmed() const { return left || right || top || bottom; }
};

/// Whether the pointer lies in the band along an armed edge of the screen that it is on. The band
/// includes its inner boundary; an edge that two screens share is an edge of each; a pointer on no
/// screen is in no band. "Top" is the edge with the larger y.
[[nodiscard]] bool isInBand(const EdgeBand& band, Point pointer, std::span<const Rect> screens);

} // namespace quillon
