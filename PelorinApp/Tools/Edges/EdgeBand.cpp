#include "Tools/Edges/EdgeBand.h"

namespace quillon {

EdgesAt edgesAt(const EdgeBand& band, Point pointer, const Rect& screen) {
    const double d = band.width;
    return {
        .left = band.left && pointer.x - screen.minX() <= d,
        .right = band.right && screen.maxX() - pointer.x <= d,
        .top = band.top && screen.maxY() - pointer.y <= d,
        .bottom = band.bottom && pointer.y - screen.minY() <= d,
    };
}

bool isInBand(const EdgeBand& band, Point pointer, std::span<const Rect> screens) {
    const Rect* screen = screenContaining(pointer, screens);
    return screen != nullptr && edgesAt(band, pointer, *screen).any();
}

} // namespace quillon
