#pragma once

#include "Platform/Linux/keys/KeyGrabProbe.h"
#include "Platform/Linux/keys/Keymap.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quillon {

/// Strokes keys on the keyboard of the XTEST extension, over a connection of its own, which is made
/// for the first stroke, and anew when it was lost. Not for the main thread: it waits for answers
/// of the server, and for other programs.
///
/// A stroke is the press and the release in one request to the server, so no key stays down,
/// whenever this process may end. Modifiers that the user holds are left alone and count, as they
/// would with a key of the keyboard.
///
/// A keysym that the keyboard lacks is put onto a keycode that nothing uses, until giveBack(). One
/// that remains, because the process was ended by force, gives a keysym by a keycode that as good
/// as no key sends; the next stroke finds it there.
class KeyInjector {
  public:
    /// `pause` is called between looks whether other programs have noticed a new keycode; it
    /// returns after some milliseconds, false when there is to be no further look.
    explicit KeyInjector(std::function<bool()> pause) : pause_(std::move(pause)) {}
    KeyInjector(const KeyInjector&) = delete;
    KeyInjector& operator=(const KeyInjector&) = delete;

    /// Whether another program would get the stroke because it has grabbed the key. Nobody can have
    /// grabbed one that the keyboard lacks.
    [[nodiscard]] bool isGrabbed(xcb_keysym_t keysym);

    /// False when the server grants no synthetic input, or the keyboard has no room for the keysym.
    [[nodiscard]] bool stroke(xcb_keysym_t keysym);

    /// Whether the keyboard has a keysym from here.
    [[nodiscard]] bool hasBorrowed() const { return !borrowed_.empty(); }

    /// Unless somebody has changed the key since.
    void giveBack();

  private:
    struct Borrowed {
        xcb_keycode_t keycode = 0;
        xcb_keysym_t keysym = 0;
    };

    [[nodiscard]] bool connect();
    void readEvents();
    [[nodiscard]] const Keymap& keymap();
    [[nodiscard]] bool isGrabbedNow(xcb_keycode_t keycode);
    [[nodiscard]] std::optional<xcb_keycode_t> grabbedKeycode(xcb_keysym_t keysym);
    [[nodiscard]] std::optional<xcb_keycode_t> unusedKeycode();
    [[nodiscard]] std::optional<xcb_keycode_t> borrow(xcb_keysym_t keysym);
    void setKeysym(xcb_keycode_t keycode, xcb_keysym_t keysym) const;
    void awaitGrab(xcb_keycode_t keycode);

    std::function<bool()> pause_;
    std::unique_ptr<X11Connection> connection_;
    std::optional<KeyGrabProbe> probe_;
    std::optional<Keymap> keymap_; // until it changes
    std::vector<Borrowed> borrowed_;
};

} // namespace quillon
