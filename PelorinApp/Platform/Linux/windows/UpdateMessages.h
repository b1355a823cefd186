#pragma once

#include "Platform/Linux/updates/UpdateWindow.h"
#include "Platform/Linux/windows/MessageWindow.h"

#include <memory>

namespace quillon {

/// What the user reads of a check for updates, in a window that holds up nothing else. A
/// QApplication must exist by the first time that something is shown.
class UpdateMessages final : public UpdateWindow {
  public:
    /// `inputTime`: see EwmhClient.
    explicit UpdateMessages(std::function<std::uint32_t()> inputTime)
        : inputTime_(std::move(inputTime)) {}

    void show(const std::string& title, const std::string& text,
              std::vector<UpdateButton> buttons) override;

  private:
    std::function<std::uint32_t()> inputTime_;
    std::unique_ptr<MessageWindow> window_;
};

} // namespace quillon
