#pragma once

#include "Platform/AccessibilityElement.h"

namespace quillon {

class MacAccessibilityElements final : public AccessibilityElements {
  public:
    [[nodiscard]] AccessibilityElementRef application(ProcessId process) override;
};

} // namespace quillon
