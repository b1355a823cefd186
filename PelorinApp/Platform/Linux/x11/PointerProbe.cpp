#include "Platform/Linux/x11/PointerProbe.h"

#include "Platform/Linux/x11/ScrollNotch.h"

#include <span>

namespace quillon {

namespace {

constexpr std::uint32_t wheelButtonBits() {
    std::uint32_t bits = 0;
    for (const std::uint8_t button : wheelButtons) {
        bits |= std::uint32_t{1} << button;
    }
    return bits;
}

} // namespace

PointerProbe::PointerProbe(const X11Connection& connection)
    : connection_(connection), window_(xcb_generate_id(connection.get())) {
    xcb_create_window(connection.get(), 0, window_, connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
}

std::optional<PointerProbe::State> PointerProbe::look(xcb_input_device_id_t master) const {
    const XcbOwned<xcb_input_xi_query_pointer_reply_t> reply(xcb_input_xi_query_pointer_reply(
        connection_.get(),
        xcb_input_xi_query_pointer(connection_.get(), connection_.root(), master), nullptr));
    if (!reply) {
        return std::nullopt;
    }
    std::uint32_t down = 0;
    const std::span buttons(xcb_input_xi_query_pointer_buttons(reply.get()), reply->buttons_len);
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        down |= i == 0 ? buttons[i] & ~wheelButtonBits() : buttons[i];
    }
    constexpr double fractions = 65536;
    return State{reply->root_x / fractions, reply->root_y / fractions, down != 0,
                 reply->same_screen != 0};
}

bool PointerProbe::isGrabbed(xcb_input_device_id_t master) const {
    // A grab that cannot succeed, since the window is not shown, has no effect, but the server
    // looks first whether somebody else has one.
    const std::uint32_t mask = 0;
    const XcbOwned<xcb_input_xi_grab_device_reply_t> reply(xcb_input_xi_grab_device_reply(
        connection_.get(),
        xcb_input_xi_grab_device(connection_.get(), window_, XCB_CURRENT_TIME, XCB_NONE, master,
                                 XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, 0, 1,
                                 &mask),
        nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

} // namespace quillon
