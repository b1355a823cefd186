#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillon {

/// What the kernel tells of one place among those that a touchpad follows contacts in.
struct ContactSlot {
    int trackingId = -1; // negative: nothing there
    int toolType = 0;    // MT_TOOL_FINGER
    int distance = 0;    // 0: on the surface
};

/// What a touchpad says besides: the keys BTN_TOUCH (0) and, for one (1) to five (5) contacts,
/// BTN_TOOL_FINGER to BTN_TOOL_QUINTTAP.
using ContactKeys = std::bitset<6>;

/// The key of a code of EV_KEY; ContactKeys().size() for all that are of no interest.
[[nodiscard]] std::size_t contactKey(unsigned int code);

/// All that contacts are counted from.
struct ContactState {
    std::vector<ContactSlot> slots; // none: the touchpad knows only how many there are
    int slot = 0;                   // that is spoken of; out of range: one that is not followed
    ContactKeys keys;
    bool hasTouchKey = false; // without it, a tool key alone says that something is down
};

/// Counts the contacts that are down on a touchpad, from its input events. No I/O, no allocation
/// after it was made.
///
/// Where there are slots, they are what counts, without palms and without fingers that only hover.
/// The keys are derived from them by the kernel, with palms, so they say less; except where a
/// touchpad feels more fingers than it can follow. Those with two slots are common, also such that
/// know only the corners of where fingers are (INPUT_PROP_SEMI_MT), and tell three fingers by
/// BTN_TOOL_TRIPLETAP. So keys count when they tell of more contacts than there are slots, and
/// where there are none.
class ContactCounter {
  public:
    explicit ContactCounter(ContactState state);

    /// Takes in an event. True at the end of a frame in which fingers came, went or were exchanged.
    ///
    /// What is read between SYN_DROPPED and the frame after it has gaps; reset() then.
    bool handle(unsigned int type, unsigned int code, int value);

    /// How everything is, after what led there was lost. True if those are other fingers.
    bool reset(ContactState state);

    /// After the last frame.
    [[nodiscard]] int contacts() const { return contacts_; }

    [[nodiscard]] const ContactState& state() const { return state_; }

  private:
    void change(unsigned int code, int value);
    bool endFrame();
    [[nodiscard]] int count() const;

    ContactState state_;
    bool isChanged_ = false;   // in this frame
    std::vector<int> fingers_; // the tracking identifiers, by slot, of the last frame
    int contacts_ = 0;
};

} // namespace quillon
