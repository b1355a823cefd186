#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <optional>

#include <xcb/xinput.h>

namespace quillon {

/// Asks what the pointer is doing, without disturbing it.
class PointerProbe {
  public:
    explicit PointerProbe(const X11Connection& connection);

    struct State {
        double x = 0; // pixels
        double y = 0;
        bool isButtonDown = false; // any but the wheel's
        bool isOnOurScreen = true; // there may be X screens beside ours, with roots of their own
    };

    /// Nothing when the server does not answer.
    [[nodiscard]] std::optional<State> look(xcb_input_device_id_t master) const;

    /// Whether the pointer is grabbed: by an open menu, a screen locker, or who was clicked, while
    /// the button is down. Our own wheel grabs count, too, while one of them is active.
    [[nodiscard]] bool isGrabbed(xcb_input_device_id_t master) const;

    /// A window of this connection that is there as long as the connection is.
    [[nodiscard]] xcb_window_t window() const { return window_; }

  private:
    const X11Connection& connection_;
    xcb_window_t window_; // never shown
};

} // namespace quillon
