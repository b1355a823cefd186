#pragma once

#include "Platform/Linux/x11/DeviceButtons.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <vector>

#include <xcb/xinput.h>

namespace quillon {

/// The numbers by which applications know the buttons of devices: raw events know nothing of
/// left-handed mice and wheels that are turned over. Remembered, since asking for each event would
/// cost two round trips, until the server says that somebody has changed them.
class ButtonNumbers {
  public:
    explicit ButtonNumbers(const X11Connection& connection) : connection_(connection) {}

    /// Has the connection told of changes. The server must have been told the version of the input
    /// extension.
    void follow();

    /// To be told of every event of the connection, in order.
    void handle(const xcb_generic_event_t& event);

    /// Of a button of the device `source`, which moves the pointer `master`; 0 when it is switched
    /// off.
    [[nodiscard]] unsigned numberOf(std::uint32_t button, xcb_input_device_id_t source,
                                    xcb_input_device_id_t master);

  private:
    void followDevices();
    const ButtonMap& mapOf(xcb_input_device_id_t device);

    struct Numbered {
        xcb_input_device_id_t device = 0;
        ButtonMap map;
    };

    const X11Connection& connection_;
    std::uint8_t mappingNotify_ = 0; // an event's number, which the server chooses
    bool haveDevicesChanged_ = false;
    std::vector<Numbered> maps_; // a few
};

} // namespace quillon
