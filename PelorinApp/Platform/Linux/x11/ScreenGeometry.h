#pragma once

#include "Platform/Geometry.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace quillon {

/// A monitor in the X server's coordinates: pixels, origin at the top left of the root window.
struct PixelRect {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool operator==(const PixelRect&) const = default;
};

struct PixelPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool operator==(const PixelPoint&) const = default;
};

/// How the X server's pixels map to points. Immutable, so that threads can share one.
class ScreenGeometry {
  public:
    /// `monitors` has the main screen first and is not empty; `scale` is pixels per point.
    ScreenGeometry(std::vector<PixelRect> monitors, double scale);

    [[nodiscard]] Point toPoints(std::int32_t x, std::int32_t y) const;

    /// The nearest pixel corner.
    [[nodiscard]] PixelPoint toPixels(Point point) const;

    [[nodiscard]] double pixelsPerPoint() const { return scale_; }
    [[nodiscard]] std::span<const Rect> frames() const { return frames_; }

    bool operator==(const ScreenGeometry& other) const {
        return monitors_ == other.monitors_ && scale_ == other.scale_;
    }

  private:
    std::vector<PixelRect> monitors_;
    double scale_;
    std::vector<Rect> frames_;
};

/// Pixels per point as the desktop has set it for all programs: the Xft.dpi of the X resources by
/// 96, or 1 when it says none or nonsense.
[[nodiscard]] double scaleFromResources(std::string_view resources);

} // namespace quillon
