#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <array>
#include <cstdint>
#include <vector>

namespace quillon {

/// The wheel as X11 knows it: buttons that are pressed and released at once per notch.
inline constexpr std::array<std::uint8_t, 4> wheelButtons{4, 5, 6, 7};

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
    void pass(const xcb_button_press_event_t& press) const;
    void consume(const xcb_button_press_event_t& press) const;

  private:
    void allow(std::uint8_t mode, const xcb_button_press_event_t& press) const;

    const X11Connection& connection_;
    bool taken_ = false;
};

} // namespace quillon
