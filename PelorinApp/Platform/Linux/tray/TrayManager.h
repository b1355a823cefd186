#pragma once

#include "Platform/Linux/tray/TrayAtoms.h"

#include <cstdint>
#include <optional>

namespace quillon {

/// What a tray says of itself, as properties of the window that owns its selection.
struct TrayManager {
    xcb_window_t owner = XCB_NONE;
    xcb_visualid_t visual = 0;
    std::uint8_t depth = 0;
    bool isVertical = false;
    std::optional<double> labelLuminance; // of the colour that it wants labels drawn in, 0…1

    [[nodiscard]] bool hasAlpha() const { return depth == 32; }
};

/// Today's tray, whose window's changes and end the connection then gets to know; nothing when
/// there is none. Waits for answers of the server.
[[nodiscard]] std::optional<TrayManager> findTrayManager(const X11Connection& connection,
                                                         const TrayAtoms& atoms);

/// Reads again what may change while the tray is there.
void refreshTrayManager(TrayManager& manager, const X11Connection& connection,
                        const TrayAtoms& atoms);

} // namespace quillon
