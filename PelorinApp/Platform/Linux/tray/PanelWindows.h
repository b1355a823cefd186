#pragma once

#include "Platform/Linux/tray/TrayAtoms.h"
#include "Platform/Linux/x11/ScreenGeometry.h"

#include <QImage>

#include <optional>
#include <vector>

namespace quillon {

/// A window's rectangle in pixels of the root window; nothing when it is gone. Waits for answers
/// of the server, as all of these do.
[[nodiscard]] std::optional<PixelRect> placeOf(const X11Connection& connection,
                                               xcb_window_t window);

/// The window itself or the one above it that lies in the root window, and so on the desktop;
/// nothing when it is gone.
[[nodiscard]] std::optional<xcb_window_t> topLevelOf(const X11Connection& connection,
                                                     xcb_window_t window);

/// The panels of this desktop: windows that say of themselves that they are docks.
[[nodiscard]] std::vector<PixelRect> docks(const X11Connection& connection, const TrayAtoms& atoms);

/// What is to be seen within a rectangle of the root window; a null image when that is not to be
/// had, as where a part of it is outside.
[[nodiscard]] QImage screenPixels(const X11Connection& connection, const PixelRect& place);

/// What two rectangles have in common, if anything.
[[nodiscard]] std::optional<PixelRect> intersection(const PixelRect& a, const PixelRect& b);

} // namespace quillon
