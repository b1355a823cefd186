#pragma once

#include "Platform/Applications.h"

namespace quillon {

class MacApplications final : public Applications {
  public:
    RunningApplicationRef frontmostApplication() override;
    RunningApplicationRef runningApplication(ProcessId process) override;
};

} // namespace quillon
