#pragma once

#include "Platform/Alerts.h"

namespace quillon {

/// The system's alerts. The call returns when the user has answered.
class MacAlerts final : public Alerts {
  public:
    void runModal(const Alert& alert) override;
};

} // namespace quillon
