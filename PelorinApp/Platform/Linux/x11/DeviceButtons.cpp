#include "Platform/Linux/x11/DeviceButtons.h"

#include <algorithm>
#include <array>

#include <sys/uio.h>
#include <xcb/xcbext.h>
#include <xcb/xtest.h>

namespace quillon {

namespace {

void fakeRelease(const X11Connection& connection, xcb_input_device_id_t device,
                 std::uint8_t physical) {
    if (const auto first = connection.firstEvent(&xcb_input_id)) {
        xcb_test_fake_input(connection.get(), *first + XCB_INPUT_DEVICE_BUTTON_RELEASE, physical,
                            XCB_CURRENT_TIME, XCB_NONE, 0, 0, static_cast<std::uint8_t>(device));
    }
}

/// The device's own numbers of the buttons that are down on it.
std::vector<std::uint8_t> buttonsDown(const xcb_input_xi_device_info_t& info) {
    std::vector<std::uint8_t> down;
    auto classes = xcb_input_xi_device_info_classes_iterator(&info);
    for (; classes.rem > 0; xcb_input_device_class_next(&classes)) {
        if (classes.data->type != XCB_INPUT_DEVICE_CLASS_TYPE_BUTTON) {
            continue;
        }
        const auto* buttons = reinterpret_cast<const xcb_input_button_class_t*>(classes.data);
        const std::span state(
            xcb_input_button_class_state(buttons),
            static_cast<std::size_t>(xcb_input_button_class_state_length(buttons)));
        for (std::size_t button = 1; button < state.size() * 32; ++button) {
            if ((state[button / 32] >> (button % 32) & 1U) != 0) {
                down.push_back(static_cast<std::uint8_t>(button));
            }
        }
    }
    return down;
}

} // namespace

ButtonMap buttonMap(const X11Connection& connection, xcb_input_device_id_t device) {
    const XcbOwned<xcb_input_get_device_button_mapping_reply_t> reply(
        xcb_input_get_device_button_mapping_reply(
            connection.get(),
            xcb_input_get_device_button_mapping(connection.get(),
                                                static_cast<std::uint8_t>(device)),
            nullptr));
    if (!reply) {
        return {};
    }
    const auto* first = xcb_input_get_device_button_mapping_map(reply.get());
    return {first, first + xcb_input_get_device_button_mapping_map_length(reply.get())};
}

std::uint8_t buttonThatCountsAs(std::uint32_t button, const ButtonMap& map) {
    const auto found = std::find(map.begin(), map.end(), button);
    return static_cast<std::uint8_t>(found == map.end() ? button
                                                        : std::distance(map.begin(), found) + 1);
}

void releaseOnDevices(const X11Connection& connection, std::uint8_t button,
                      xcb_input_device_id_t master, std::span<const xcb_input_device_id_t> held) {
    const XcbOwned<xcb_input_xi_query_device_reply_t> devices(xcb_input_xi_query_device_reply(
        connection.get(), xcb_input_xi_query_device(connection.get(), XCB_INPUT_DEVICE_ALL),
        nullptr));
    if (!devices) {
        return;
    }
    const std::uint8_t ofDevices = buttonThatCountsAs(button, buttonMap(connection, master));
    auto infos = xcb_input_xi_query_device_infos_iterator(devices.get());
    for (; infos.rem > 0; xcb_input_xi_device_info_next(&infos)) {
        const auto& info = *infos.data;
        const bool movesPointer =
            info.type == XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER && info.attachment == master;
        const bool isHeld = std::find(held.begin(), held.end(), info.deviceid) != held.end();
        if (!movesPointer && !isHeld) {
            continue;
        }
        const auto down = buttonsDown(info);
        const auto map = down.empty() ? ButtonMap{} : buttonMap(connection, info.deviceid);
        for (const std::uint8_t physical : down) {
            if (physical <= map.size() && map[physical - 1] == ofDevices) {
                fakeRelease(connection, info.deviceid, physical);
            }
        }
    }
}

void touchAxis(const X11Connection& connection, xcb_input_device_id_t device, std::uint16_t axis) {
    constexpr std::uint8_t relative = 1;
    const auto first = connection.firstEvent(&xcb_input_id);
    if (!first) {
        return;
    }
    // The bindings leave no room for the axes.
    struct {
        xcb_test_fake_input_request_t request{};
        xcb_input_device_valuator_event_t axes{};
    } message;
    message.request.type = *first + XCB_INPUT_DEVICE_MOTION_NOTIFY;
    message.request.detail = relative;
    message.request.deviceid = static_cast<std::uint8_t>(device);
    message.axes.response_type = *first + XCB_INPUT_DEVICE_VALUATOR;
    message.axes.device_id = message.request.deviceid;
    message.axes.first_valuator = static_cast<std::uint8_t>(axis);
    message.axes.num_valuators = 1;
    xcb_protocol_request_t request{1, &xcb_test_id, XCB_TEST_FAKE_INPUT, 1};
    std::array<iovec, 3> parts{}; // the first two are the library's own
    parts[2] = {&message, sizeof message};
    xcb_send_request(connection.get(), 0, &parts[2], &request);
}

} // namespace quillon
