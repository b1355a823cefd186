#include "Platform/Linux/x11/InputPoster.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

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

} // namespace

void InputPoster::useDevice(const PointerDevices& pointers) {
    buttonMap_ = buttonMap(connection_, pointers.injected);
    wheelMap_ = buttonMap_;
    pointerMap_ = buttonMap(connection_, pointers.master);
}

void InputPoster::readWheel(const PointerDevices& pointers) {
    wheelMap_ = buttonMap(connection_, pointers.injected);
}

std::uint8_t InputPoster::physical(std::uint32_t button) const {
    return buttonThatCountsAs(button, buttonMap_);
}

std::uint8_t InputPoster::numberFor(std::uint32_t button) const {
    return physical(buttonThatCountsAs(button, pointerMap_));
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
    if (swallowed_[number] != 0) {
        --swallowed_[number];
        return;
    }
    if (presses_[number] == 0) {
        press(button); // the server drops releases of what the device has not pressed
    }
    if (--presses_[number] == 0) {
        fake(XCB_BUTTON_RELEASE, number);
    }
}

void InputPoster::swallow(std::uint32_t button) {
    const std::uint8_t number = numberFor(button);
    if (number < presses_.size()) {
        if (std::exchange(isPosted_[number], false)) {
            --presses_[number]; // no device will release it
        }
        swallowed_[number] += std::exchange(presses_[number], 0);
    }
}

void InputPoster::post(std::uint32_t button, bool isDown) {
    const std::uint8_t number = numberFor(button);
    if (number >= presses_.size() || isPosted_[number] == isDown) {
        return;
    }
    isPosted_[number] = isDown;
    const bool isAlone = isDown ? presses_[number]++ == 0 : --presses_[number] == 0;
    if (isAlone) {
        postedEvents_.expect(number, isDown);
        fake(isDown ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number);
    }
}

void InputPoster::scroll(std::uint8_t button) {
    const std::uint8_t number = buttonThatCountsAs(button, wheelMap_);
    fake(XCB_BUTTON_PRESS, number);
    fake(XCB_BUTTON_RELEASE, number);
}

void InputPoster::takePointer() { fake(XCB_MOTION_NOTIFY, relative); }

void InputPoster::handBack(const ScrollDevice& device) const {
    for (const auto& axis : {device.vertical, device.horizontal}) {
        if (axis) {
            touchAxis(connection_, device.id, axis->number);
        }
    }
}

void InputPoster::releaseAll() {
    for (std::size_t number = 0; number < presses_.size(); ++number) {
        if (std::exchange(presses_[number], 0) != 0) {
            if (isPosted_[number]) {
                postedEvents_.expect(static_cast<std::uint32_t>(number), false);
            }
            fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(number));
        }
    }
    swallowed_ = {};
    isPosted_ = {};
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
