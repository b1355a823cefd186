#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <span>
#include <vector>

#include <xcb/xinput.h>

namespace quillon {

/// How a device numbers its buttons, as left-handed people change it: the element n - 1 is what the
/// button n counts as. Empty when there is no such device.
using ButtonMap = std::vector<std::uint8_t>;

/// The number that an application sees has gone through two of them: that of the mouse, and that of
/// the pointer which the mouse moves.
[[nodiscard]] ButtonMap buttonMap(const X11Connection& connection, xcb_input_device_id_t device);

/// The button that counts as `button`; itself where the map knows of none.
[[nodiscard]] std::uint8_t buttonThatCountsAs(std::uint32_t button, const ButtonMap& map);

/// Lets go of a button wherever it is down: on the devices that move the pointer `master`, and on
/// those in `held`. `button` is the number for applications. What a finger does to the real button
/// afterwards, the server drops.
void releaseOnDevices(const X11Connection& connection, std::uint8_t button,
                      xcb_input_device_id_t master, std::span<const xcb_input_device_id_t> held);

/// Plays a movement of one axis of a device, by nothing at all.
void touchAxis(const X11Connection& connection, xcb_input_device_id_t device, std::uint16_t axis);

} // namespace quillon
