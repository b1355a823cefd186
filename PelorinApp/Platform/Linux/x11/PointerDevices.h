#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <xcb/xinput.h>

namespace quillon {

/// A valuator that scrolls.
struct ScrollAxis {
    std::uint16_t number = 0;
    double increment = 1; // how far it moves per notch; positive is down or right
};

/// A mouse or touchpad that scrolls through valuators, as nearly all do today.
struct ScrollDevice {
    xcb_input_device_id_t id = 0;
    std::optional<ScrollAxis> vertical;
    std::optional<ScrollAxis> horizontal;
    bool isTouchpad = false;
    bool isAbsolute = false; // says where it is, not how far it moved
    bool isAttached = false; // moves the pointer at present: not while it is grabbed
};

/// The devices that move the pointer.
struct PointerDevices {
    xcb_input_device_id_t master = 0;
    xcb_input_device_id_t injected = 0; // the device that synthetic input comes from
    std::vector<ScrollDevice> scrolling;
};

/// A device that moves a pointer, or is grabbed by somebody, or is attached to none.
struct PointerSlave {
    xcb_input_device_id_t id = 0;
    std::string name;
    bool isEnabled = false;
    bool isTouchpad = false;
    bool hasAxes = false;      // scrolls through valuators
    bool isPlainWheel = false; // scrolls through buttons alone
};

/// All of them, of whatever pointer.
[[nodiscard]] std::vector<PointerSlave> queryPointerSlaves(const X11Connection& connection);

/// The device that the buttons of the pointer `master` were last pressed on; 0 when unknown.
[[nodiscard]] xcb_input_device_id_t lastPressed(const X11Connection& connection,
                                                xcb_input_device_id_t master);

/// Asks the server. `held` are devices that this program has grabbed, and which the server
/// therefore does not count among the pointer's for the time being.
[[nodiscard]] PointerDevices queryPointerDevices(const X11Connection& connection,
                                                 std::span<const xcb_input_device_id_t> held);

[[nodiscard]] constexpr double toDouble(const xcb_input_fp3232_t& number) {
    return number.integral + number.frac * 0x1p-32;
}

} // namespace quillon
