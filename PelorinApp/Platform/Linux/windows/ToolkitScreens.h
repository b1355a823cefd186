#pragma once

#include "Platform/Linux/x11/ScreenGeometry.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>
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

/// Where the toolkit says this pixel is, whichever screen shows it. A QGuiApplication must exist.
[[nodiscard]] QPoint toToolkit(PixelPoint pixel);

/// How what is to be shown on one screen is measured and placed.
class ToolkitMeasure {
  public:
    /// For the screen with this frame, in points. Nothing while the toolkit has no screen.
    [[nodiscard]] static std::optional<ToolkitMeasure> of(const Rect& frame,
                                                          const ScreenGeometry& geometry);

    [[nodiscard]] Size toPoints(QSize units) const;
    [[nodiscard]] QSize toUnits(Size points) const;

    /// Where a window has its corner that covers this place.
    [[nodiscard]] QPoint cornerOf(const Rect& place) const;

  private:
    ToolkitMeasure(const ToolkitScreen& screen, const ScreenGeometry& geometry);

    ToolkitScreen screen_;
    const ScreenGeometry* geometry_;
    double pointsPerUnit_;
};

} // namespace quillon
