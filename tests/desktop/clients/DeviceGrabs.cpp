#include "Probe.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include <xcb/xinput.h>

namespace {

/// Also says which version of it we speak, which must come first.
bool hasInputExtension(const Display& display) {
    const Owned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        display.connection, xcb_input_xi_query_version(display.connection, 2, 2), nullptr));
    return version != nullptr;
}

/// Nobody can grab anything for a window that is not mapped; but the server says first if somebody
/// else already has.
bool isTaken(const Display& display, xcb_window_t unmapped, std::uint16_t device) {
    const std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS;
    const Owned<xcb_input_xi_grab_device_reply_t> reply(xcb_input_xi_grab_device_reply(
        display.connection,
        xcb_input_xi_grab_device(display.connection, unmapped, XCB_CURRENT_TIME, XCB_NONE, device,
                                 XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, 0, 1,
                                 &mask),
        nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

} // namespace

int listGrabs(const Display& display) {
    const bool hasExtension = hasInputExtension(display);
    const Owned<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        display.connection, xcb_input_xi_query_device(display.connection, XCB_INPUT_DEVICE_ALL),
        nullptr));
    if (!hasExtension || !devices) {
        std::fputs("x11_probe: this display has no input extension\n", stderr);
        return 1;
    }
    const auto window = xcb_generate_id(display.connection);
    xcb_create_window(display.connection, XCB_COPY_FROM_PARENT, window, display.root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    for (auto i = xcb_input_xi_query_device_infos_iterator(devices.get()); i.rem > 0;
         xcb_input_xi_device_info_next(&i)) {
        const std::string name(xcb_input_xi_device_info_name(i.data), i.data->name_len);
        std::printf("%s %s\n", isTaken(display, window, i.data->deviceid) ? "taken" : "free",
                    name.c_str());
    }
    return 0;
}

std::vector<std::uint32_t> buttonsDown(const Display& display) {
    constexpr std::uint16_t masterPointer = 2; // which a server always has
    const Owned<xcb_input_xi_query_pointer_reply_t> reply(xcb_input_xi_query_pointer_reply(
        display.connection,
        xcb_input_xi_query_pointer(display.connection, display.root, masterPointer), nullptr));
    if (!reply || reply->buttons_len == 0) {
        return {0};
    }
    const auto* buttons = xcb_input_xi_query_pointer_buttons(reply.get());
    return {buttons, buttons + reply->buttons_len};
}

bool areAllUp(const Display& display) {
    const Owned<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        display.connection, xcb_input_xi_query_device(display.connection, XCB_INPUT_DEVICE_ALL),
        nullptr));
    if (!devices) {
        return false;
    }
    for (auto i = xcb_input_xi_query_device_infos_iterator(devices.get()); i.rem > 0;
         xcb_input_xi_device_info_next(&i)) {
        auto classes = xcb_input_xi_device_info_classes_iterator(i.data);
        for (; classes.rem > 0; xcb_input_device_class_next(&classes)) {
            if (classes.data->type != XCB_INPUT_DEVICE_CLASS_TYPE_BUTTON) {
                continue;
            }
            const auto* buttons = reinterpret_cast<const xcb_input_button_class_t*>(classes.data);
            const auto* state = xcb_input_button_class_state(buttons);
            if (std::any_of(state, state + xcb_input_button_class_state_length(buttons),
                            [](std::uint32_t bits) { return bits != 0; })) {
                return false;
            }
        }
    }
    return true;
}

int canGrabLeft(const Display& display) {
    constexpr std::uint16_t masterPointer = 2;
    const std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_BUTTON_PRESS;
    const std::uint32_t anyModifier = XCB_INPUT_MODIFIER_MASK_ANY;
    if (!hasInputExtension(display)) {
        return 1;
    }
    // Nobody else gets a turn meanwhile, or the question itself would be in their way.
    xcb_grab_server(display.connection);
    const Owned<xcb_input_xi_passive_grab_device_reply_t> reply(
        xcb_input_xi_passive_grab_device_reply(
            display.connection,
            xcb_input_xi_passive_grab_device(
                display.connection, XCB_CURRENT_TIME, display.root, XCB_NONE, 1, masterPointer, 1,
                1, XCB_INPUT_GRAB_TYPE_BUTTON, XCB_INPUT_GRAB_MODE_22_ASYNC,
                XCB_INPUT_GRAB_MODE_22_ASYNC, 0, &mask, &anyModifier),
            nullptr));
    const bool free = reply && reply->num_modifiers == 0;
    xcb_input_xi_passive_ungrab_device(display.connection, display.root, 1, masterPointer, 1,
                                       XCB_INPUT_GRAB_TYPE_BUTTON, &anyModifier);
    xcb_ungrab_server(display.connection);
    const Owned<xcb_get_input_focus_reply_t> done(xcb_get_input_focus_reply(
        display.connection, xcb_get_input_focus(display.connection), nullptr));
    std::puts(free ? "free" : "taken");
    return free ? 0 : 1;
}

int listButtonsDown(const Display& display) {
    if (!hasInputExtension(display)) {
        std::fputs("x11_probe: this display has no input extension\n", stderr);
        return 1;
    }
    const auto buttons = buttonsDown(display);
    for (std::size_t button = 1; button < buttons.size() * 32; ++button) {
        if ((buttons[button / 32] >> (button % 32) & 1U) != 0) {
            std::printf("%zu\n", button);
        }
    }
    return 0;
}
