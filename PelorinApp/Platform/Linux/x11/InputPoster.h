#pragma once

#include "Platform/Linux/x11/DeviceButtons.h"
#include "Platform/Linux/x11/PointerDevices.h"
#include "Platform/Linux/x11/PostedEvents.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <array>
#include <cstdint>

#include <xcb/xinput.h>

namespace quillon {

/// Puts input that was held back into the server's stream, by the device of the XTEST extension.
///
/// That device has one state per button however many mice there are, so presses are counted. The
/// server lets a button go only when no device of the pointer has it down: to release here is
/// always safe, also while a finger is still on the real button.
class InputPoster {
  public:
    InputPoster(const X11Connection& connection, PostedEvents& postedEvents)
        : connection_(connection), postedEvents_(postedEvents) {}

    /// Reads how buttons are numbered on the injecting device, and by the pointer that it moves.
    void useDevice(const PointerDevices& pointers);

    /// Reads only how its wheel buttons are numbered, which may change while others are down.
    void readWheel(const PointerDevices& pointers);

    /// Makes the injecting device the one that moves the pointer, without moving it. Programs that
    /// warp the pointer would otherwise warp the last device that moved it, though it is held.
    void takePointer();

    /// In pixels. Fractions are kept until they make a whole one, however long that takes.
    void moveBy(double dx, double dy);
    void moveTo(double x, double y);

    /// Buttons as a device numbers them, before the pointer does. A release without a press is that
    /// of a press made before the device was held: the pointer has it down, and lets it go.
    void press(std::uint32_t button);
    void release(std::uint32_t button);

    /// Somebody has let go of the button although it is down here: its release is not to be posted.
    /// The number is that which applications see.
    void swallow(std::uint32_t button);

    /// A press or release that no device has made, of a button by the number that applications see.
    /// One that changes nothing is left out, such as the release of what has been let go of
    /// meanwhile.
    void post(std::uint32_t button, bool isDown);

    /// One notch of a wheel.
    void scroll(std::uint8_t button);

    /// Makes this device the one that moves the pointer again, as if it had been touched.
    ///
    /// Programs keep in mind where a device's scroll axes stand, and read them anew when the
    /// pointer passes to it from another one, such as ours. Were its next input a scroll, they
    /// would take the axes' place after it for the place before, and lose a notch.
    void handBack(const ScrollDevice& device) const;

    /// Lets go of every button that is down, on behalf of a held device or posted.
    void releaseAll();

    /// The injecting device's own number of a button, by the number that applications see.
    [[nodiscard]] std::uint8_t numberFor(std::uint32_t button) const;

    /// Grows with everything that is posted.
    [[nodiscard]] std::uint64_t posted() const { return posted_; }

    /// A bit for each button of the injecting device that is down, for whoever must clean up.
    [[nodiscard]] std::uint32_t buttonsDown() const;

  private:
    static constexpr std::size_t mostButtons = 32;

    [[nodiscard]] std::uint8_t physical(std::uint32_t button) const;
    void fake(std::uint8_t type, std::uint8_t detail, std::int16_t x = 0, std::int16_t y = 0);

    const X11Connection& connection_;
    PostedEvents& postedEvents_;
    ButtonMap buttonMap_;
    ButtonMap wheelMap_; // the same as buttonMap_, or newer
    ButtonMap pointerMap_;
    // By physical number
    std::array<std::uint8_t, mostButtons> presses_{};
    std::array<std::uint8_t, mostButtons> swallowed_{}; // releases that are yet to come
    std::array<bool, mostButtons> isPosted_{};
    std::uint64_t posted_ = 0;
    double restX_ = 0;
    double restY_ = 0;
};

} // namespace quillon
