#pragma once

#include "Platform/Linux/reversal/ReversedDevices.h"
#include "Platform/Linux/x11/InputPoster.h"
#include "Platform/Linux/x11/NotchGatherer.h"
#include "Platform/Linux/x11/PointerDevices.h"
#include "Platform/Linux/x11/ScrollNotch.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <functional>
#include <vector>

#include <xcb/xinput.h>

namespace quillon {

/// Mice and touchpads with scroll axes, taken away from the pointer so that their scrolling can be
/// held back. What they do besides scrolling is posted on at once.
///
/// Button grabs cannot hold back this kind of scrolling: applications read it from the motion of
/// the axes.
class HeldDevices {
  public:
    /// `onNotch` gets each whole notch of a held device; its location is yet to be found out.
    HeldDevices(const X11Connection& connection, InputPoster& poster,
                const ReversedDevices& reversed, std::function<void(const ScrollNotch&)> onNotch)
        : connection_(connection), poster_(poster), reversed_(reversed),
          onNotch_(std::move(onNotch)) {}

    /// Devices have come, gone or changed: forgets those that are not held any more.
    void follow(const PointerDevices& now);

    /// Takes those that are not held yet. False when another program holds one of them. `mover` is
    /// the device that moved the pointer last.
    bool take(const PointerDevices& pointers, xcb_input_device_id_t mover);

    /// Gives them back. What they sent before that is still on its way: it is handled like all
    /// input until finishRelease() is called.
    void release();
    void finishRelease();

    [[nodiscard]] bool areHeld() const { return !held_.empty() && !isReleasing_; }
    [[nodiscard]] bool areAllHeld(const PointerDevices& pointers) const;
    [[nodiscard]] bool isReleasing() const { return isReleasing_; }
    [[nodiscard]] std::vector<xcb_input_device_id_t> ids() const;

    /// An event of the input extension; those of other devices are left alone.
    void handle(const xcb_ge_generic_event_t& event);

  private:
    struct Held {
        ScrollDevice device;
        NotchGatherer vertical;
        NotchGatherer horizontal;
    };

    enum class Grab { taken, heldByOther, deviceGone };
    [[nodiscard]] Grab grab(const ScrollDevice& device) const;
    void ungrab(const Held& held) const;
    [[nodiscard]] Held* find(xcb_input_device_id_t device);
    void moved(Held& held, const xcb_input_raw_motion_event_t& event);
    void movedTo(const Held& held, const xcb_input_motion_event_t& event);
    void buttonChanged(const xcb_input_button_press_event_t& event, bool pressed);
    void scrolled(const Held& held, ScrollNotch::Axis axis, int notches);

    const X11Connection& connection_;
    InputPoster& poster_;
    const ReversedDevices& reversed_;
    std::function<void(const ScrollNotch&)> onNotch_;
    std::vector<Held> held_;
    xcb_input_device_id_t lastActive_ = 0; // whose input was posted last; 0 is none
    bool isReleasing_ = false;
};

} // namespace quillon
