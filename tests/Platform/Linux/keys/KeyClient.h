#pragma once

#include "Platform/Linux/keys/SpecialKey.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <memory>
#include <string>
#include <vector>

#include <xcb/xinput.h>

namespace quillon {

/// Another program on the X server that gets keys: because it has grabbed them for the whole
/// screen, or because its window has the keyboard.
class KeyClient {
  public:
    enum class Grabs { core, extension };

    KeyClient();

    /// With these modifiers alone, and again whenever the keyboard changes, as programs do that
    /// handle keys for a desktop. Says whether there was anything to grab.
    bool grab(SpecialKey key, Grabs kind, std::uint16_t modifiers = 0);

    /// By its keycode.
    bool grabKeycode(xcb_keycode_t keycode, Grabs kind, std::uint16_t modifiers = 0);

    /// Gives the keyboard to a window of its own.
    void focus();

    /// Such as "down playPause" and "up next", in order.
    const std::vector<std::string>& seen();

    /// The modifiers of the latest.
    [[nodiscard]] unsigned latestState() const { return latestState_; }

    void pressKey(xcb_keycode_t keycode, bool isDown) const;

    /// What the keyboard has.
    [[nodiscard]] std::vector<xcb_keycode_t> keycodes(xcb_keysym_t keysym) const;
    void setKeysym(xcb_keycode_t keycode, xcb_keysym_t keysym) const;
    void takeOut(SpecialKey key) const;

    /// Whether any key is down.
    [[nodiscard]] bool isAnyDown() const;

    /// The keyboard has changed so many times.
    [[nodiscard]] int changes();

    [[nodiscard]] X11Connection& connection() const { return *connection_; }

  private:
    struct Wish {
        SpecialKey key;
        Grabs kind;
        std::uint16_t modifiers;
    };
    void read();
    void note(xcb_keycode_t keycode, bool isDown, unsigned state);

    std::unique_ptr<X11Connection> connection_;
    std::vector<Wish> wishes_;
    std::vector<std::string> seen_;
    unsigned latestState_ = 0;
    int changes_ = 0;
};

} // namespace quillon
