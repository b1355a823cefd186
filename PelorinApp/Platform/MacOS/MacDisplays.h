#pragma once

#include "Platform/Displays.h"

#include <vector>

namespace quillon {

/// Pointer and screens as the window toolkit gives them. The first of its screens is the one whose
/// bottom left is the origin.
class MacDisplays final : public Displays {
  public:
    [[nodiscard]] Point mouseLocation() const override;
    [[nodiscard]] std::span<const Rect> screens() const override;

  private:
    mutable std::vector<Rect> screens_;
};

} // namespace quillon
