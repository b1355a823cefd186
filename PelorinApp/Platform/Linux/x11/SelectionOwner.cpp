#include "Platform/Linux/x11/SelectionOwner.h"

namespace quillon {

std::string selectionOfScreen(std::string_view name, const X11Connection& connection) {
    int number = 0;
    for (auto each = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
         each.rem > 0 && each.data->root != connection.root(); xcb_screen_next(&each)) {
        ++number;
    }
    return std::string(name) + "_S" + std::to_string(number);
}

std::optional<xcb_window_t> followSelectionOwner(const X11Connection& connection,
                                                 xcb_atom_t selection) {
    xcb_connection_t* const x = connection.get();
    const XcbOwned<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, selection), nullptr));
    if (!reply || reply->owner == XCB_NONE) {
        return std::nullopt;
    }
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    const XcbOwned<xcb_generic_error_t> gone(xcb_request_check(
        x, xcb_change_window_attributes_checked(x, reply->owner, XCB_CW_EVENT_MASK, &mask)));
    return gone ? std::nullopt : std::optional(reply->owner);
}

} // namespace quillon
