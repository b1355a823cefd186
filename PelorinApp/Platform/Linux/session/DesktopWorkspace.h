#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/Workspace.h"

#include <functional>
#include <utility>

namespace quillon {

/// Hands addresses to xdg-open, which knows the user's programs on every desktop.
class DesktopWorkspace final : public Workspace {
  public:
    /// `showPermissions` shows what the program may not do here, and what to do about it: there is
    /// no page of that kind in the settings of these desktops.
    DesktopWorkspace(Diagnostics& diagnostics, std::function<void()> showPermissions)
        : diagnostics_(diagnostics), showPermissions_(std::move(showPermissions)) {}

    /// Web addresses, mailto: and the schemes of programs (x-...); nothing else is opened. A
    /// failure is said. The system settings' page of permissions is one of our own.
    void open(std::string_view url) override;

    [[nodiscard]] DisplayOptions displayOptions() const override { return options_; }
    void setDisplayOptionsHandler(std::function<void()> changed) override {
        changed_ = std::move(changed);
    }

    /// Tells who follows them.
    void setDisplayOptions(DisplayOptions options);

  private:
    Diagnostics& diagnostics_;
    std::function<void()> showPermissions_;
    DisplayOptions options_;
    std::function<void()> changed_;
};

} // namespace quillon
