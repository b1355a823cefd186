#include "Platform/Linux/x11/ScreenGeometry.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace quillon {

namespace {
constexpr double unscaledDpi = 96.0;
constexpr double largestScale = 8.0;
constexpr double smallestScale = 0.5;
} // namespace

ScreenGeometry::ScreenGeometry(std::vector<PixelRect> monitors, double scale)
    : monitors_(std::move(monitors)), scale_(scale) {
    frames_.reserve(monitors_.size());
    for (const PixelRect& monitor : monitors_) {
        const Point bottomLeft = toPoints(monitor.x, monitor.y + monitor.height);
        frames_.push_back(
            Rect{bottomLeft.x, bottomLeft.y, monitor.width / scale_, monitor.height / scale_});
    }
}

Point ScreenGeometry::toPoints(std::int32_t x, std::int32_t y) const {
    const PixelRect& main = monitors_.front();
    return {(x - main.x) / scale_, (main.y + main.height - y) / scale_};
}

PixelPoint ScreenGeometry::toPixels(Point point) const {
    const PixelRect& main = monitors_.front();
    return {main.x + static_cast<std::int32_t>(std::lround(point.x * scale_)),
            main.y + main.height - static_cast<std::int32_t>(std::lround(point.y * scale_))};
}

double scaleFromResources(std::string_view resources) {
    constexpr std::string_view name = "Xft.dpi:";
    for (std::size_t start = 0; start < resources.size();) {
        const std::size_t end = std::min(resources.find('\n', start), resources.size());
        std::string_view line = resources.substr(start, end - start);
        start = end + 1;
        if (!line.starts_with(name)) {
            continue;
        }
        line.remove_prefix(name.size());
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        double dpi = 0;
        std::from_chars(line.data(), line.data() + line.size(), dpi);
        const double scale = dpi / unscaledDpi;
        return scale >= smallestScale && scale <= largestScale ? scale : 1.0;
    }
    return 1.0;
}

} // namespace quillon
