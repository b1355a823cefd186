#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <span>

#include <xcb/xinput.h>

namespace quillon {

/// The left button, by the number that applications see.
inline constexpr std::uint8_t leftButton = 1;

/// A synchronous passive grab of the left button on the root window, with any modifiers. While it
/// is taken, each press of that button reaches this connection first, and the pointer stands still
/// until it is let pass or consumed. While another program has the pointer for itself, as for a
/// menu, presses go there.
///
/// A grab of the input extension, unlike those of the wheel: it alone says which device has been
/// pressed. Beside another program's core grab of the same button on the same window, the one that
/// was taken last comes first, so it is to be taken only for the moments in which it is needed.
class LeftPressGrab {
  public:
    explicit LeftPressGrab(const X11Connection& connection) : connection_(connection) {}

    /// Of the pointer that `master` moves. False when another program has it.
    bool take(xcb_input_device_id_t master);

    /// A press that came before is still to be passed or consumed.
    void release();
    [[nodiscard]] bool isTaken() const { return isTaken_; }

    /// Whether the event, of the input extension, is a press that this grab has brought here.
    [[nodiscard]] bool hasCaught(const xcb_ge_generic_event_t& event) const;

    /// Ends the stand-still: the press goes on, to window managers that wait for clicks and to the
    /// program under the pointer, as if it had never been here.
    void pass(const xcb_input_button_press_event_t& press) const;

    /// Nobody gets the press, nor its release. The button is let go of on the device itself while
    /// the finger is still on it: were the release to come by itself, later, some programs would
    /// drop the release of another button that is posted meanwhile.
    ///
    /// `held` are devices that this program has grabbed. Another button that was pressed while the
    /// pointer stood still is caught next, and must be passed.
    void consume(const xcb_input_button_press_event_t& press,
                 std::span<const xcb_input_device_id_t> held) const;

    /// Calls `post`, which posts presses that are not to come here.
    template <class Post>
    void letThrough(const Post& post) {
        const bool wasTaken = isTaken_;
        if (wasTaken) {
            release();
        }
        post();
        if (wasTaken) {
            take(master_);
        }
    }

  private:
    void allow(std::uint8_t mode, const xcb_input_button_press_event_t& press) const;

    const X11Connection& connection_;
    xcb_input_device_id_t master_ = 0; // of the latest grab
    bool isTaken_ = false;
};

} // namespace quillon
