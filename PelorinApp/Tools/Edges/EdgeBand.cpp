#include "Tools/Edges/EdgeBand.h"

namespace quillon {

bool isInBand(const EdgeBand& band, Point pointer, std::span<const Rect> screens) {
    const Rect* screen = screenContaining(pointer, screens);
    if (screen == nullptr) {
        return false;
    }
    const double d = band.width;
    return (band.left && pointer.x - screen->minX() <= d) ||
           (band.right && screen->maxX() - pointer.x <= d) ||
           (band.top && screen->maxY() - pointer.y <= d) ||
           (band.bottom && pointer.y - screen->minY() <= d);
}

} // namespace quillon
