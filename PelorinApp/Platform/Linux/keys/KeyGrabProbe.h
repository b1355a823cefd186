#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <array>
#include <cstdint>

#include <xcb/xinput.h>

namespace quillon {

/// Finds out whether another program has grabbed a key for the whole screen, as those do that
/// handle media keys for a desktop. The server tells nobody of grabs, but refuses one that another
/// program has: so it is tried, by core grabs and by those of the input extension, which do not
/// exclude each other.
class KeyGrabProbe {
  public:
    /// `connection` must have nothing else that grabs keys.
    explicit KeyGrabProbe(const X11Connection& connection);

    /// Whether a press of the key at this moment would go to a program that has grabbed it. What
    /// counts are the modifiers that are down, with which the press would arrive.
    ///
    /// No other program notices: meanwhile the server deals with our requests only, so that nobody
    /// is refused because of us, and a key that is pressed in that moment goes on to its program.
    [[nodiscard]] bool isGrabbed(xcb_keycode_t keycode) const;

    /// To be told of every event of the connection, as soon as the question is answered.
    void note(const xcb_generic_event_t& event) const;

    /// The question in its parts. From take() to letGo(), which has the answer, a press of the key
    /// stands still here, and the keyboard with it.
    void take(xcb_keycode_t keycode);
    [[nodiscard]] bool letGo();

  private:
    struct Attempt {
        xcb_keycode_t keycode = 0;
        std::uint16_t modifiers = 0;
        xcb_void_cookie_t core{};
        xcb_input_xi_passive_grab_device_cookie_t extension{};
    };

    [[nodiscard]] std::uint16_t modifiersDown() const;
    [[nodiscard]] Attempt grab(xcb_keycode_t keycode, std::uint16_t modifiers) const;
    void ungrab(const Attempt& attempt) const;
    [[nodiscard]] bool wasRefused(const Attempt& attempt) const;

    const X11Connection& connection_;
    xcb_input_device_id_t keyboard_ = 0; // none: the server lacks the extension
    Attempt attempt_;
};

} // namespace quillon
