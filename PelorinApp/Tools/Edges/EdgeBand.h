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

/// The armed edges of its screen that the pointer is at: within `band.width` of each, the band's
/// inner boundary included. "Top" is the edge with the larger y.
struct EdgesAt {
    bool left = false;
    bool right = false;
    bool top = false;
    bool bottom = false;

    [[nodiscard]] bool any() const { return left || right || top || bottom; }
};
[[nodiscard]] EdgesAt edgesAt(const EdgeBand& band, Point pointer, const Rect& screen);

/// Whether the pointer lies in the band along an armed edge of the screen that it is on. An
/// edge that two screens share is an edge of each; a pointer on no screen is in no band.
[[nodiscard]] bool isInBand(const EdgeBand& band, Point pointer, std::span<const Rect> screens);

} // namespace quillon
