#pragma once

#include "Platform/Linux/touch/ContactCounter.h"
#include "Platform/Posix/files/FileDescriptor.h"

#include <functional>
#include <memory>
#include <optional>

struct libevdev;

namespace quillon {

/// A touchpad that is open for reading. It is not grabbed: everybody else gets what it sends, too.
///
/// The kernel is asked to leave out for us what fingers do on the way, so that one finger that
/// moves the pointer does not even wake our thread.
class EvdevTouchpad {
  public:
    /// `file` must not block. Null when it is none of an input device, or that has gone.
    static std::unique_ptr<EvdevTouchpad> make(FileDescriptor file);

    /// Readable when something has come. It hangs up when the touchpad goes.
    [[nodiscard]] int descriptor() const { return file_.get(); }

    [[nodiscard]] int contacts() const { return counter_.contacts(); }

    /// Reads all that has come, and calls `touched` after each frame in which fingers came, went or
    /// were exchanged. False when the touchpad has gone.
    bool read(const std::function<void()>& touched);

  private:
    struct Free {
        void operator()(libevdev* device) const;
    };
    using Device = std::unique_ptr<libevdev, Free>;

    EvdevTouchpad(FileDescriptor file, Device device);

    /// Reads the whole state anew, when libevdev asks for it. Whether that may be other fingers;
    /// none when the touchpad has gone.
    std::optional<bool> synchronise();
    [[nodiscard]] ContactState state() const;

    FileDescriptor file_;
    Device device_;
    ContactCounter counter_;
};

} // namespace quillon
