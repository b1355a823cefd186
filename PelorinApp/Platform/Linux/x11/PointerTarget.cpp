#include "Platform/Linux/x11/PointerTarget.h"

namespace quillon {

PointerTarget::Look PointerTarget::look(xcb_input_device_id_t master, xcb_window_t window) const {
    return Look(xcb_input_xi_query_pointer_reply(
        connection_.get(), xcb_input_xi_query_pointer(connection_.get(), window, master), nullptr));
}

xcb_window_t PointerTarget::window(xcb_input_device_id_t master) {
    return descend(master, look(master, connection_.root()));
}

xcb_window_t PointerTarget::recentWindow(xcb_input_device_id_t master) {
    const Look atRoot = look(master, connection_.root());
    const bool hasStayed = atRoot && atRoot->same_screen != 0 && master == last_.master &&
                           atRoot->root_x == last_.x && atRoot->root_y == last_.y &&
                           atRoot->child == last_.outermost;
    return hasStayed && Clock::now() - last_.at < moment ? last_.innermost
                                                         : descend(master, atRoot);
}

xcb_window_t PointerTarget::descend(xcb_input_device_id_t master, const Look& atRoot) {
    if (!atRoot) {
        return connection_.root();
    }
    if (atRoot->same_screen == 0) {
        return atRoot->root; // none of our windows is on another X screen
    }
    last_ = {master,        atRoot->root_x,     atRoot->root_y,
             atRoot->child, connection_.root(), Clock::now()};
    for (xcb_window_t next = atRoot->child; next != XCB_WINDOW_NONE;) {
        last_.innermost = next;
        const Look reply = look(master, next);
        if (!reply || reply->same_screen == 0) {
            break; // just closed, but it was there
        }
        next = reply->child;
    }
    return last_.innermost;
}

} // namespace quillon
