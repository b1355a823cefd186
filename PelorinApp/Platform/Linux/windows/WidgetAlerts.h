#pragma once

#include "Platform/Alerts.h"
#include "Platform/Linux/windows/MessageWindow.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace quillon {

/// Alerts as windows of the toolkit. A call comes back at once; the user has to answer before
/// anything else of the program can be used. A QApplication must exist.
class WidgetAlerts final : public Alerts {
  public:
    /// `inputTime`: see EwmhClient.
    explicit WidgetAlerts(std::function<std::uint32_t()> inputTime)
        : inputTime_(std::move(inputTime)) {}

    void runModal(const Alert& alert) override;

    /// Those that have not been answered.
    [[nodiscard]] std::vector<MessageWindow*> open() const;

  private:
    std::function<std::uint32_t()> inputTime_;
    std::vector<std::unique_ptr<MessageWindow>> shown_;
};

} // namespace quillon
