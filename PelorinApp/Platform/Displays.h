#pragma once

#include "Platform/Geometry.h"

#include <span>

namespace quillon {

/// Pointer and screens, in points, origin at the main screen's bottom left. Main thread only.
class Displays {
  public:
    virtual ~Displays() = default;

    /// Where the pointer is; while a tap's callback runs, where it was when the event happened.
    [[nodiscard]] virtual Point mouseLocation() const = 0;

    /// The screens' frames, the main screen first. Valid until control returns to the run loop.
    [[nodiscard]] virtual std::span<const Rect> screens() const = 0;
};

} // namespace quillon
