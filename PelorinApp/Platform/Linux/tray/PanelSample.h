#pragma once

#include "Platform/Linux/x11/ScreenGeometry.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <QImage>

#include <optional>

namespace quillon {

/// How a panel looks around an item that lies in it.
struct PanelSample {
    double luminance = 0; // 0…1
    QImage ground;        // as large as the item
};

/// Looks at the screen; nothing when the panel is not to be seen there. The rectangles are in
/// pixels of the root window. Waits for answers of the server.
[[nodiscard]] std::optional<PanelSample> samplePanel(const X11Connection& connection,
                                                     const PixelRect& panel, const PixelRect& item);

/// How bright a panel is, 0…1, whoever lies in it; nothing when it is not to be seen on the screen.
/// The rectangle is in pixels of the root window. Waits for answers of the server.
[[nodiscard]] std::optional<double> panelLuminance(const X11Connection& connection,
                                                   const PixelRect& panel);

/// A few lines of a panel along its whole length, away from its middle, where things are drawn, and
/// from its edges, which have borders.
[[nodiscard]] PixelRect plainStrip(const PixelRect& panel);

} // namespace quillon
