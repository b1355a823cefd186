#pragma once

#include <span>

namespace quillon {

/// A position in points. Unless a function says otherwise the origin is the bottom left of the
/// main screen and y grows upward.
struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

/// In points.
struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

/// A rectangle in points, (x, y) being its bottom left corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double minX() const { return x; }
    [[nodiscard]] double maxX() const { return x + width; }
    [[nodiscard]] double minY() const { return y; }
    [[nodiscard]] double maxY() const { return y + height; }

    /// Half-open as pointer positions need it: minX <= x < maxX and minY < y <= maxY. The top
    /// left pixel of a screen has x = minX and y = maxY, and screens that touch share no point.
    [[nodiscard]] bool contains(Point p) const;

    bool operator==(const Rect&) const = default;
};

/// The place as counted from the top left of the main screen, y growing downward, or back.
[[nodiscard]] Point fromTopLeft(Point p, std::span<const Rect> screens);

/// The first screen that contains p, or null.
[[nodiscard]] const Rect* screenContaining(Point p, std::span<const Rect> screens);

} // namespace quillon
