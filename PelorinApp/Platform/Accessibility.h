#pragma once

namespace quillon {

/// Whether the system lets this process observe and post input events.
class Accessibility {
  public:
    virtual ~Accessibility() = default;

    /// Asks the system and never makes it prompt the user.
    [[nodiscard]] virtual bool isProcessTrusted() = 0;
};

} // namespace quillon
