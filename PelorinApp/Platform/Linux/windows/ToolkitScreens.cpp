#include "Platform/Linux/windows/ToolkitScreens.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace quillon {

std::vector<ToolkitScreen> toolkitScreens() {
    std::vector<ToolkitScreen> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        screens.push_back({screen->geometry(), screen->devicePixelRatio()});
    }
    return screens;
}

const ToolkitScreen& toolkitScreenAt(PixelPoint pixel, std::span<const ToolkitScreen> screens) {
    const auto found = std::find_if(screens.begin(), screens.end(), [&](const ToolkitScreen& one) {
        const QRect& area = one.geometry;
        return pixel.x >= area.x() && pixel.x < area.x() + area.width() * one.ratio &&
               pixel.y >= area.y() && pixel.y < area.y() + area.height() * one.ratio;
    });
    return found == screens.end() ? screens.front() : *found;
}

QPoint toToolkit(PixelPoint pixel, const ToolkitScreen& screen) {
    const QPoint corner = screen.geometry.topLeft();
    return {corner.x() + qRound((pixel.x - corner.x()) / screen.ratio),
            corner.y() + qRound((pixel.y - corner.y()) / screen.ratio)};
}

QPoint toToolkit(PixelPoint pixel) {
    const auto screens = toolkitScreens();
    return screens.empty() ? QPoint(pixel.x, pixel.y)
                           : toToolkit(pixel, toolkitScreenAt(pixel, screens));
}

std::optional<ToolkitMeasure> ToolkitMeasure::of(const Rect& frame,
                                                 const ScreenGeometry& geometry) {
    const auto screens = toolkitScreens();
    if (screens.empty()) {
        return std::nullopt;
    }
    const PixelPoint corner = geometry.toPixels({frame.minX(), frame.maxY()});
    return ToolkitMeasure(toolkitScreenAt(corner, screens), geometry);
}

ToolkitMeasure::ToolkitMeasure(const ToolkitScreen& screen, const ScreenGeometry& geometry)
    : screen_(screen), geometry_(&geometry),
      pointsPerUnit_(screen.ratio / geometry.pixelsPerPoint()) {}

Size ToolkitMeasure::toPoints(QSize units) const {
    return {units.width() * pointsPerUnit_, units.height() * pointsPerUnit_};
}

QSize ToolkitMeasure::toUnits(Size points) const {
    return QSizeF(points.width / pointsPerUnit_, points.height / pointsPerUnit_).toSize();
}

QPoint ToolkitMeasure::cornerOf(const Rect& place) const {
    return toToolkit(geometry_->toPixels({place.minX(), place.maxY()}), screen_);
}

} // namespace quillon
