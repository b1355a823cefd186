#pragma once

#include "Platform/Accessibility.h"

namespace quillon {

class MacAccessibility final : public Accessibility {
  public:
    [[nodiscard]] bool isProcessTrusted() override;
};

} // namespace quillon
