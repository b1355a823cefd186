#include "Platform/Linux/tray/TrayManager.h"

#include "Platform/Linux/x11/SelectionOwner.h"
#include "Platform/Linux/x11/X11Properties.h"

namespace quillon {

namespace {

/// 0 when the screen has no such visual.
std::uint8_t depthOf(const xcb_screen_t& screen, xcb_visualid_t visual) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0;
         xcb_depth_next(&depth)) {
        for (auto each = xcb_depth_visuals_iterator(depth.data); each.rem > 0;
             xcb_visualtype_next(&each)) {
            if (each.data->visual_id == visual) {
                return depth.data->depth;
            }
        }
    }
    return 0;
}

} // namespace

std::optional<TrayManager> findTrayManager(const X11Connection& connection,
                                           const TrayAtoms& atoms) {
    const auto owner = followSelectionOwner(connection, atoms.selection);
    if (!owner) {
        return std::nullopt;
    }
    TrayManager manager{.owner = *owner};
    const xcb_screen_t& screen = connection.screen();
    manager.visual = cardinal(connection, manager.owner, atoms.visual).value_or(0);
    manager.depth = depthOf(screen, manager.visual);
    if (manager.depth == 0) {
        manager.visual = screen.root_visual;
        manager.depth = screen.root_depth;
    }
    refreshTrayManager(manager, connection, atoms);
    return manager;
}

void refreshTrayManager(TrayManager& manager, const X11Connection& connection,
                        const TrayAtoms& atoms) {
    manager.isVertical = cardinal(connection, manager.owner, atoms.orientation).value_or(0) == 1;
    // Red, green and blue of labels come first, in 16 bits each; errors, warnings and success
    // follow.
    const auto colors = cardinals(connection, manager.owner, atoms.colors);
    if (colors && colors->size() >= 3) {
        manager.labelLuminance =
            (0.2126 * (*colors)[0] + 0.7152 * (*colors)[1] + 0.0722 * (*colors)[2]) / 65535.0;
    } else {
        manager.labelLuminance.reset();
    }
}

} // namespace quillon
