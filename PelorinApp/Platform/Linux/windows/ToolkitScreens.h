#pragma once

#include "Platform/Linux/x11/ScreenGeometry.h"

#include <QPoint>
#include <QRect>

#include <span>
#include <vector>

namespace quillon {

/// A screen as the toolkit counts: its corner where it is in pixels, its size in units of `ratio`
/// pixels.
struct ToolkitScreen {
    QRect geometry;
    double ratio = 1;
};

/// The screens of the toolkit. A QGuiApplication must exist.
[[nodiscard]] std::vector<ToolkitScreen> toolkitScreens();

/// The screen that shows this pixel, else the first. There must be one.
[[nodiscard]] const ToolkitScreen& toolkitScreenAt(PixelPoint pixel,
                                                   std::span<const ToolkitScreen> screens);

/// Where the toolkit says this pixel is, on that screen.
[[nodiscard]] QPoint toToolkit(PixelPoint pixel, const ToolkitScreen& screen);

} // namespace quillon
