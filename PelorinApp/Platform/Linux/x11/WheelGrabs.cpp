#include "Platform/Linux/x11/WheelGrabs.h"

#include <array>

namespace quillon {

std::vector<std::uint8_t> WheelGrabs::take() {
    std::array<xcb_void_cookie_t, wheelButtons.size()> requests{};
    for (std::size_t i = 0; i < wheelButtons.size(); ++i) {
        requests[i] = grab(wheelButtons[i]);
    }
    std::vector<std::uint8_t> refused;
    for (std::size_t i = 0; i < wheelButtons.size(); ++i) {
        const XcbOwned<xcb_generic_error_t> error(
            xcb_request_check(connection_.get(), requests[i]));
        if (error) {
            refused.push_back(wheelButtons[i]);
        }
    }
    taken_ = true;
    return refused;
}

void WheelGrabs::release() {
    for (const std::uint8_t button : wheelButtons) {
        ungrab(button);
    }
    xcb_flush(connection_.get());
    taken_ = false;
}

xcb_void_cookie_t WheelGrabs::grab(std::uint8_t button) const {
    return xcb_grab_button_checked(connection_.get(), 0, connection_.root(),
                                   XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE,
                                   XCB_GRAB_MODE_SYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE,
                                   button, XCB_MOD_MASK_ANY);
}

void WheelGrabs::ungrab(std::uint8_t button) const {
    xcb_ungrab_button(connection_.get(), button, connection_.root(), XCB_MOD_MASK_ANY);
}

void WheelGrabs::note(const xcb_generic_event_t& event) {
    if (event.response_type == XCB_BUTTON_PRESS) {
        isActive_ = true;
    } else if (event.response_type == XCB_BUTTON_RELEASE) {
        isActive_ = false;
    }
}

void WheelGrabs::pass(const xcb_button_press_event_t& press) {
    isActive_ = false;
    allow(XCB_ALLOW_REPLAY_POINTER, press);
}

void WheelGrabs::consume(const xcb_button_press_event_t& press) const {
    allow(XCB_ALLOW_ASYNC_POINTER, press);
}

void WheelGrabs::allow(std::uint8_t mode, const xcb_button_press_event_t& press) const {
    xcb_allow_events(connection_.get(), mode, press.time);
    xcb_flush(connection_.get());
}

} // namespace quillon
