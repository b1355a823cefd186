#pragma once

#include "Platform/Linux/looks/DesktopLooks.h"

namespace quillon {

/// Gives the toolkit's windows the desktop's colours where it does not have them by itself: it
/// follows few desktops. A QGuiApplication must exist; main thread only.
void applyDesktopPalette(const DesktopLook& look);

} // namespace quillon
