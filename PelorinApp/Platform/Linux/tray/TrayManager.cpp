#include "Platform/Linux/tray/TrayManager.h"

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
    xcb_connection_t* const x = connection.get();
    const XcbOwned<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, atoms.selection), nullptr));
    if (!reply || reply->owner == XCB_NONE) {
        return std::nullopt;
    }
    TrayManager manager{.owner = reply->owner};
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    const XcbOwned<xcb_generic_error_t> gone(xcb_request_check(
        x, xcb_change_window_attributes_checked(x, manager.owner, XCB_CW_EVENT_MASK, &mask)));
    if (gone) {
        return std::nullopt;
    }
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
