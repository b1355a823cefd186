#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <chrono>

#include <xcb/xinput.h>

namespace quillon {

/// Which window the pointer is over, so that events may be told apart by the program that gets
/// them.
class PointerTarget {
  public:
    explicit PointerTarget(const X11Connection& connection) : connection_(connection) {}

    /// The innermost window under the pointer `master`, by one round trip per level.
    [[nodiscard]] xcb_window_t window(xcb_input_device_id_t master);

    /// The same by one round trip, where the pointer has stayed and was looked up a moment ago:
    /// for notches, of which a thousand can come in a second.
    [[nodiscard]] xcb_window_t recentWindow(xcb_input_device_id_t master);

  private:
    using Clock = std::chrono::steady_clock;
    using Look = XcbOwned<xcb_input_xi_query_pointer_reply_t>;

    /// No longer than it takes somebody who scrolls to notice that a window has come.
    static constexpr std::chrono::milliseconds moment{50};

    [[nodiscard]] Look look(xcb_input_device_id_t master, xcb_window_t window) const;
    xcb_window_t descend(xcb_input_device_id_t master, const Look& atRoot);

    const X11Connection& connection_;
    struct {
        xcb_input_device_id_t master = 0;
        xcb_input_fp1616_t x = 0;
        xcb_input_fp1616_t y = 0;
        xcb_window_t outermost = XCB_WINDOW_NONE;
        xcb_window_t innermost = XCB_WINDOW_NONE;
        Clock::time_point at;
    } last_;
};

} // namespace quillon
