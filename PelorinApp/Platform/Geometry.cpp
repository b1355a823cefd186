#include "Platform/Geometry.h"

namespace quillon {

bool Rect::contains(Point p) const {
    return p.x >= minX() && p.x < maxX() && p.y > minY() && p.y <= maxY();
}

Point fromTopLeft(Point p, std::span<const Rect> screens) {
    return {p.x, (screens.empty() ? 0 : screens.front().height) - p.y};
}

const Rect* screenContaining(Point p, std::span<const Rect> screens) {
    for (const Rect& screen : screens) {
        if (screen.contains(p)) {
            return &screen;
        }
    }
    return nullptr;
}

} // namespace quillon
