#include "Platform/Linux/x11/LeftPressGrab.h"

#include "Platform/Linux/x11/DeviceButtons.h"

namespace quillon {

namespace {
constexpr std::uint32_t anyModifier = XCB_INPUT_MODIFIER_MASK_ANY;
} // namespace

bool LeftPressGrab::take(xcb_input_device_id_t master) {
    master_ = master;
    const std::uint32_t mask =
        XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_BUTTON_RELEASE;
    const XcbOwned<xcb_input_xi_passive_grab_device_reply_t> reply(
        xcb_input_xi_passive_grab_device_reply(
            connection_.get(),
            xcb_input_xi_passive_grab_device(
                connection_.get(), XCB_CURRENT_TIME, connection_.root(), XCB_NONE, leftButton,
                master, 1, 1, XCB_INPUT_GRAB_TYPE_BUTTON, XCB_INPUT_GRAB_MODE_22_SYNC,
                XCB_INPUT_GRAB_MODE_22_ASYNC, 0, &mask, &anyModifier),
            nullptr));
    isTaken_ = reply && reply->num_modifiers == 0; // it lists those that were refused
    return isTaken_;
}

void LeftPressGrab::release() {
    xcb_input_xi_passive_ungrab_device(connection_.get(), connection_.root(), leftButton, master_,
                                       1, XCB_INPUT_GRAB_TYPE_BUTTON, &anyModifier);
    xcb_flush(connection_.get());
    isTaken_ = false;
}

bool LeftPressGrab::hasCaught(const xcb_ge_generic_event_t& event) const {
    return event.event_type == XCB_INPUT_BUTTON_PRESS &&
           reinterpret_cast<const xcb_input_button_press_event_t&>(event).deviceid == master_;
}

void LeftPressGrab::pass(const xcb_input_button_press_event_t& press) const {
    allow(XCB_INPUT_EVENT_MODE_REPLAY_DEVICE, press);
}

void LeftPressGrab::consume(const xcb_input_button_press_event_t& press,
                            std::span<const xcb_input_device_id_t> held) const {
    releaseOnDevices(connection_, leftButton, master_, held);
    // One event further: that release, which ends the grab, or the press of another button.
    allow(XCB_INPUT_EVENT_MODE_SYNC_DEVICE, press);
}

void LeftPressGrab::allow(std::uint8_t mode, const xcb_input_button_press_event_t& press) const {
    xcb_input_xi_allow_events(connection_.get(), press.time, press.deviceid, mode, 0,
                              connection_.root());
    xcb_flush(connection_.get());
}

} // namespace quillon
