#include "Platform/Linux/tray/PanelSample.h"

#include "Platform/Linux/tray/PanelWindows.h"
#include "Platform/Linux/tray/Pixels.h"

#include <algorithm>

namespace quillon {

namespace {
constexpr int sampleReach = 4; // lengths of the item, to both of its sides
constexpr int mostPixels = 4000;
} // namespace

std::optional<PanelSample> samplePanel(const X11Connection& connection, const PixelRect& panel,
                                       const PixelRect& item) {
    const auto root = placeOf(connection, connection.root());
    const auto shown = root ? intersection(panel, *root) : std::nullopt;
    if (!shown) {
        return std::nullopt;
    }
    const int reach = sampleReach * std::max(item.width, item.height);
    const bool vertical = panel.height > panel.width;
    const auto strip = intersection(
        *shown, vertical ? PixelRect{item.x, item.y - reach, item.width, item.height + 2 * reach}
                         : PixelRect{item.x - reach, item.y, item.width + 2 * reach, item.height});
    const QImage pixels = strip ? screenPixels(connection, *strip) : QImage();
    if (pixels.isNull()) {
        return std::nullopt;
    }
    const QRect without(item.x - strip->x, item.y - strip->y, item.width, item.height);
    const auto luminance = medianLuminance(pixels, without);
    if (!luminance) {
        return std::nullopt;
    }
    return PanelSample{*luminance,
                       groundOf(pixels, without, vertical, vertical ? item.height : item.width)};
}

std::optional<double> panelLuminance(const X11Connection& connection, const PixelRect& panel) {
    const auto root = placeOf(connection, connection.root());
    const auto shown = root ? intersection(panel, *root) : std::nullopt;
    const QImage pixels = shown ? screenPixels(connection, plainStrip(*shown)) : QImage();
    return medianLuminance(pixels, QRect());
}

PixelRect plainStrip(const PixelRect& panel) {
    const bool vertical = panel.height > panel.width;
    const int thickness = std::min(panel.width, panel.height);
    const int length = std::min(std::max(panel.width, panel.height), mostPixels);
    const int indent = thickness / 6;
    const int lines = std::clamp(mostPixels / std::max(length, 1), 1, std::max(thickness / 6, 1));
    return vertical ? PixelRect{panel.x + indent, panel.y, lines, length}
                    : PixelRect{panel.x, panel.y + indent, length, lines};
}

} // namespace quillon
