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

} // namespace quillon
