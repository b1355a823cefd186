#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

namespace quillon {

/// The keyboard as programs see it, at the moment that it was read.
class Keymap {
  public:
    /// Empty when the server does not answer.
    [[nodiscard]] static Keymap read(const X11Connection& connection);

    /// The keycodes that give the keysym without any modifier, in the order in which programs that
    /// want a single one look for it.
    [[nodiscard]] std::vector<xcb_keycode_t> keycodes(xcb_keysym_t keysym) const;

    /// Those that give no keysym at all, the ones first that hardly any keyboard sends.
    [[nodiscard]] std::vector<xcb_keycode_t> unused() const;

    /// Whether the keycode gives this keysym and no other.
    [[nodiscard]] bool givesOnly(xcb_keycode_t keycode, xcb_keysym_t keysym) const;

  private:
    [[nodiscard]] unsigned end() const;
    [[nodiscard]] xcb_keysym_t at(unsigned keycode, unsigned column) const;

    unsigned first_ = 0; // keycode
    unsigned width_ = 0; // columns, of groups and levels
    std::vector<xcb_keysym_t> keysyms_;
};

} // namespace quillon
