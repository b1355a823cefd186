#include "KeyClient.h"

#include "Platform/Linux/keys/Keymap.h"

#include <array>
#include <utility>

#include <xcb/xtest.h>

namespace quillon {

namespace {

constexpr std::array<std::pair<SpecialKey, const char*>, 5> names{{
    {SpecialKey::volumeUp, "volumeUp"},
    {SpecialKey::volumeDown, "volumeDown"},
    {SpecialKey::playPause, "playPause"},
    {SpecialKey::next, "next"},
    {SpecialKey::previous, "previous"},
}};

} // namespace

KeyClient::KeyClient() : connection_(X11Connection::open()) {
    const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection_->get(), xcb_input_xi_query_version(connection_->get(), 2, 2), nullptr));
}

bool KeyClient::grab(SpecialKey key, Grabs kind, std::uint16_t modifiers) {
    wishes_.push_back({key, kind, modifiers});
    const auto codes = keycodes(keysymOf(key));
    return !codes.empty() && grabKeycode(codes.front(), kind, modifiers);
}

bool KeyClient::grabKeycode(xcb_keycode_t keycode, Grabs kind, std::uint16_t modifiers) {
    xcb_connection_t* const c = connection_->get();
    if (kind == Grabs::core) {
        const XcbOwned<xcb_generic_error_t> error(
            xcb_request_check(c, xcb_grab_key_checked(c, 1, connection_->root(), modifiers, keycode,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        return !error;
    }
    const std::uint32_t mask =
        XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE;
    const std::uint32_t combination = modifiers;
    const XcbOwned<xcb_input_xi_passive_grab_device_reply_t> reply(
        xcb_input_xi_passive_grab_device_reply(
            c,
            xcb_input_xi_passive_grab_device(
                c, XCB_CURRENT_TIME, connection_->root(), XCB_NONE, keycode,
                XCB_INPUT_DEVICE_ALL_MASTER, 1, 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
                XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, 1, &mask, &combination),
            nullptr));
    return reply && reply->num_modifiers == 0;
}

void KeyClient::focus() {
    const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_KEY_PRESS |
                                                     XCB_EVENT_MASK_KEY_RELEASE};
    xcb_connection_t* const c = connection_->get();
    const xcb_window_t window = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, connection_->root(), 0, 0, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(c, window);
    xcb_set_input_focus(c, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    connection_->sync();
}

const std::vector<std::string>& KeyClient::seen() {
    read();
    return seen_;
}

int KeyClient::changes() {
    read();
    return changes_;
}

void KeyClient::read() {
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        switch (event->response_type) {
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE: {
            const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
            note(key.detail, event->response_type == XCB_KEY_PRESS, key.state);
            break;
        }
        case XCB_GE_GENERIC: {
            const auto& key = reinterpret_cast<const xcb_input_key_press_event_t&>(*event);
            if (key.event_type == XCB_INPUT_KEY_PRESS || key.event_type == XCB_INPUT_KEY_RELEASE) {
                note(static_cast<xcb_keycode_t>(key.detail), key.event_type == XCB_INPUT_KEY_PRESS,
                     key.mods.effective);
            }
            break;
        }
        case XCB_MAPPING_NOTIFY:
            ++changes_;
            for (const Wish& wish : wishes_) {
                for (const xcb_keycode_t keycode : keycodes(keysymOf(wish.key))) {
                    grabKeycode(keycode, wish.kind, wish.modifiers);
                }
            }
            break;
        default:
            break;
        }
    }
}

void KeyClient::note(xcb_keycode_t keycode, bool isDown, unsigned state) {
    const Keymap map = Keymap::read(*connection_);
    std::string name = "keycode " + std::to_string(keycode);
    for (const auto& [key, word] : names) {
        for (const xcb_keycode_t each : map.keycodes(keysymOf(key))) {
            name = each == keycode ? word : name;
        }
    }
    seen_.push_back((isDown ? "down " : "up ") + name);
    latestState_ = state;
}

void KeyClient::pressKey(xcb_keycode_t keycode, bool isDown) const {
    xcb_test_fake_input(connection_->get(), isDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keycode,
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    connection_->sync();
}

std::vector<xcb_keycode_t> KeyClient::keycodes(xcb_keysym_t keysym) const {
    return Keymap::read(*connection_).keycodes(keysym);
}

void KeyClient::setKeysym(xcb_keycode_t keycode, xcb_keysym_t keysym) const {
    xcb_change_keyboard_mapping(connection_->get(), 1, keycode, 1, &keysym);
    connection_->sync();
}

void KeyClient::takeOut(SpecialKey key) const {
    for (const xcb_keycode_t keycode : keycodes(keysymOf(key))) {
        setKeysym(keycode, XCB_NO_SYMBOL);
    }
}

bool KeyClient::isAnyDown() const {
    const XcbOwned<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(connection_->get(), xcb_query_keymap(connection_->get()), nullptr));
    for (const std::uint8_t byte : reply->keys) {
        if (byte != 0) {
            return true;
        }
    }
    return false;
}

} // namespace quillon
