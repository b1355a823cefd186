#pragma once

#include "Platform/Linux/x11/ScrollNotch.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <vector>

namespace quillon {

/// Synchronous passive grabs of the wheel buttons on the root window, with any modifiers. While
/// they are taken, each press of such a button reaches this connection first, and the pointer
/// stands still until it is let pass or consumed.
///
/// Core grabs on purpose: taking them fails when another program holds them, whereas grabs of the
/// newer input extension would silently take precedence over that program's.
class WheelGrabs {
  public:
    explicit WheelGrabs(const X11Connection& connection) : connection_(connection) {}

    /// Answers the buttons that another program holds; the others are ours.
    std::vector<std::uint8_t> take();
    void release();
    [[nodiscard]] bool areTaken() const { return taken_; }

    /// Ends the stand-still: the press goes on to the program under the pointer, or to nobody.
    void pass(const xcb_button_press_event_t& press);
    void consume(const xcb_button_press_event_t& press) const;

    /// To be told of every event of the connection, in order, as soon as it is read.
    void note(const xcb_generic_event_t& event);

    /// A press that was not passed has yet to be followed by its release: until then the whole
    /// pointer is grabbed, by us.
    [[nodiscard]] bool isActive() const { return isActive_; }

    /// Calls `post`, which posts presses of this button that are not to come here.
    template <class Post>
    void letThrough(std::uint8_t button, const Post& post) const {
        if (taken_) {
            ungrab(button);
        }
        post();
        if (taken_) {
            grab(button);
        }
        xcb_flush(connection_.get());
    }

  private:
    xcb_void_cookie_t grab(std::uint8_t button) const;
    void ungrab(std::uint8_t button) const;
    void allow(std::uint8_t mode, const xcb_button_press_event_t& press) const;

    const X11Connection& connection_;
    bool taken_ = false;
    bool isActive_ = false;
};

} // namespace quillon
