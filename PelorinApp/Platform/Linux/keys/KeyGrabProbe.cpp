#include "Platform/Linux/keys/KeyGrabProbe.h"

namespace quillon {

namespace {

/// The keyboard that this client's synthetic keys come from, as other programs see it.
xcb_input_device_id_t masterKeyboard(const X11Connection& connection) {
    if (!connection.hasExtension(&xcb_input_id)) {
        return 0;
    }
    xcb_connection_t* const c = connection.get();
    const auto versionAsked = xcb_input_xi_query_version(c, 2, 2);
    const auto pointerAsked = xcb_input_xi_get_client_pointer(c, XCB_NONE);
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(c, versionAsked, nullptr));
    const XcbOwned<xcb_input_xi_get_client_pointer_reply_t> pointer(
        xcb_input_xi_get_client_pointer_reply(c, pointerAsked, nullptr));
    if (!version || version->major_version < 2 || !pointer) {
        return 0;
    }
    const XcbOwned<xcb_input_xi_query_device_reply_t> device(xcb_input_xi_query_device_reply(
        c, xcb_input_xi_query_device(c, pointer->deviceid), nullptr));
    if (!device || device->num_infos == 0) {
        return 0;
    }
    return xcb_input_xi_query_device_infos_iterator(device.get()).data->attachment;
}

} // namespace

KeyGrabProbe::KeyGrabProbe(const X11Connection& connection)
    : connection_(connection), keyboard_(masterKeyboard(connection)) {}

bool KeyGrabProbe::isGrabbed(xcb_keycode_t keycode) const {
    const std::uint16_t modifiers = modifiersDown();
    xcb_grab_server(connection_.get());
    const Attempt attempt = grab(keycode, modifiers);
    ungrab(attempt);
    xcb_ungrab_server(connection_.get());
    return wasRefused(attempt);
}

void KeyGrabProbe::take(xcb_keycode_t keycode) {
    attempt_ = grab(keycode, modifiersDown());
    connection_.sync();
}

bool KeyGrabProbe::letGo() {
    ungrab(attempt_);
    return wasRefused(attempt_);
}

std::uint16_t KeyGrabProbe::modifiersDown() const {
    constexpr std::uint16_t every = 0xFF; // above them are the pointer's buttons and the group
    const XcbOwned<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        connection_.get(), xcb_query_pointer(connection_.get(), connection_.root()), nullptr));
    return reply ? static_cast<std::uint16_t>(reply->mask & every) : std::uint16_t{0};
}

KeyGrabProbe::Attempt KeyGrabProbe::grab(xcb_keycode_t keycode, std::uint16_t modifiers) const {
    xcb_connection_t* const c = connection_.get();
    Attempt attempt{.keycode = keycode, .modifiers = modifiers};
    attempt.core = xcb_grab_key_checked(c, 0, connection_.root(), modifiers, keycode,
                                        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
    if (keyboard_ != 0) {
        const std::uint32_t events =
            XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
        const std::uint32_t combination = modifiers;
        attempt.extension = xcb_input_xi_passive_grab_device(
            c, XCB_CURRENT_TIME, connection_.root(), XCB_NONE, keycode, keyboard_, 1, 1,
            XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_SYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
            0, &events, &combination);
    }
    return attempt;
}

void KeyGrabProbe::ungrab(const Attempt& attempt) const {
    xcb_connection_t* const c = connection_.get();
    xcb_ungrab_key(c, attempt.keycode, connection_.root(), attempt.modifiers);
    if (keyboard_ != 0) {
        const std::uint32_t combination = attempt.modifiers;
        xcb_input_xi_passive_ungrab_device(c, connection_.root(), attempt.keycode, keyboard_, 1,
                                           XCB_INPUT_GRAB_TYPE_KEYCODE, &combination);
    }
}

bool KeyGrabProbe::wasRefused(const Attempt& attempt) const {
    xcb_connection_t* const c = connection_.get();
    bool refused = false;
    if (keyboard_ != 0) {
        const XcbOwned<xcb_input_xi_passive_grab_device_reply_t> reply(
            xcb_input_xi_passive_grab_device_reply(c, attempt.extension, nullptr));
        refused = reply && reply->num_modifiers != 0; // it lists those that were refused
    }
    const XcbOwned<xcb_generic_error_t> error(xcb_request_check(c, attempt.core));
    return refused || (error && error->error_code == XCB_ACCESS);
}

/// A press that came between the two requests: this connection has it only by accident.
void KeyGrabProbe::note(const xcb_generic_event_t& event) const {
    xcb_connection_t* const c = connection_.get();
    if (event.response_type == XCB_KEY_PRESS) {
        const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
        xcb_allow_events(c, XCB_ALLOW_REPLAY_KEYBOARD, press.time);
        xcb_flush(c);
    } else if (event.response_type == XCB_GE_GENERIC) {
        const auto& press = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
        if (press.event_type == XCB_INPUT_KEY_PRESS) {
            xcb_input_xi_allow_events(c, press.time, press.deviceid,
                                      XCB_INPUT_EVENT_MODE_REPLAY_DEVICE, 0, connection_.root());
            xcb_flush(c);
        }
    }
}

} // namespace quillon
