#include "Platform/Linux/x11/InputPoster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include <sys/uio.h>
#include <xcb/xcbext.h>
#include <xcb/xtest.h>

namespace quillon {

namespace {

constexpr std::uint8_t relative = 1;
constexpr std::uint8_t absolute = 0;

std::int16_t coordinate(double value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

/// What has come together, to the nearest whole; the rest stays.
double takeWhole(double& rest, double more) {
    rest += more;
    const double whole = std::round(rest);
    rest -= whole;
    return whole;
}

/// A movement of this axis by nothing at all. The bindings cannot say it: they leave no room for
/// the axes of a device that is not the pointer.
void fakeRelativeAxis(const X11Connection& connection, std::uint8_t firstEvent,
                      xcb_input_device_id_t device, std::uint16_t axis) {
    struct {
        xcb_test_fake_input_request_t request{};
        xcb_input_device_valuator_event_t axes{};
    } message;
    message.request.type = firstEvent + XCB_INPUT_DEVICE_MOTION_NOTIFY;
    message.request.detail = relative;
    message.request.deviceid = static_cast<std::uint8_t>(device);
    message.axes.response_type = firstEvent + XCB_INPUT_DEVICE_VALUATOR;
    message.axes.device_id = message.request.deviceid;
    message.axes.first_valuator = static_cast<std::uint8_t>(axis);
    message.axes.num_valuators = 1;
    xcb_protocol_request_t request{1, &xcb_test_id, XCB_TEST_FAKE_INPUT, 1};
    std::array<iovec, 3> parts{}; // the first two are the library's own
    parts[2] = {&message, sizeof message};
    xcb_send_request(connection.get(), 0, &parts[2], &request);
}

} // namespace

void InputPoster::useDevice(xcb_input_device_id_t injected) {
    const XcbOwned<xcb_input_get_device_button_mapping_reply_t> reply(
        xcb_input_get_device_button_mapping_reply(
            connection_.get(),
            xcb_input_get_device_button_mapping(connection_.get(),
                                                static_cast<std::uint8_t>(injected)),
            nullptr));
    buttonMap_.clear();
    if (reply) {
        const auto* first = xcb_input_get_device_button_mapping_map(reply.get());
        buttonMap_.assign(first,
                          first + xcb_input_get_device_button_mapping_map_length(reply.get()));
    }
}

std::uint8_t InputPoster::physical(std::uint32_t button) const {
    const auto found = std::find(buttonMap_.begin(), buttonMap_.end(), button);
    return static_cast<std::uint8_t>(
        found == buttonMap_.end() ? button : std::distance(buttonMap_.begin(), found) + 1);
}

void InputPoster::moveBy(double dx, double dy) {
    const double x = takeWhole(restX_, dx);
    const double y = takeWhole(restY_, dy);
    if (x != 0 || y != 0) {
        fake(XCB_MOTION_NOTIFY, relative, coordinate(x), coordinate(y));
    }
}

void InputPoster::moveTo(double x, double y) {
    fake(XCB_MOTION_NOTIFY, absolute, coordinate(x), coordinate(y));
}

void InputPoster::press(std::uint32_t button) {
    const std::uint8_t number = physical(button);
    if (number < presses_.size() && presses_[number]++ == 0) {
        fake(XCB_BUTTON_PRESS, number);
    }
}

void InputPoster::release(std::uint32_t button) {
    const std::uint8_t number = physical(button);
    if (number >= presses_.size()) {
        return;
    }
    if (presses_[number] == 0) {
        press(button); // the server drops releases of what the device has not pressed
    }
    if (--presses_[number] == 0) {
        fake(XCB_BUTTON_RELEASE, number);
    }
}

void InputPoster::scroll(std::uint8_t button) {
    const std::uint8_t number = physical(button);
    fake(XCB_BUTTON_PRESS, number);
    fake(XCB_BUTTON_RELEASE, number);
}

void InputPoster::takePointer() { fake(XCB_MOTION_NOTIFY, relative); }

void InputPoster::handBack(const ScrollDevice& device) const {
    const auto* extension = xcb_get_extension_data(connection_.get(), &xcb_input_id);
    if (extension == nullptr) {
        return; // the connection is gone
    }
    for (const auto& axis : {device.vertical, device.horizontal}) {
        if (axis) {
            fakeRelativeAxis(connection_, extension->first_event, device.id, axis->number);
        }
    }
}

void InputPoster::releaseAll() {
    for (std::size_t number = 0; number < presses_.size(); ++number) {
        if (std::exchange(presses_[number], 0) != 0) {
            fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(number));
        }
    }
}

std::uint32_t InputPoster::buttonsDown() const {
    std::uint32_t bits = 0;
    for (std::size_t number = 0; number < presses_.size(); ++number) {
        bits |= presses_[number] != 0 ? std::uint32_t{1} << number : 0;
    }
    return bits;
}

void InputPoster::fake(std::uint8_t type, std::uint8_t detail, std::int16_t x, std::int16_t y) {
    ++posted_;
    xcb_test_fake_input(connection_.get(), type, detail, XCB_CURRENT_TIME, connection_.root(), x, y,
                        0);
}

} // namespace quillon
