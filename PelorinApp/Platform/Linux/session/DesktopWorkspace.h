#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/Workspace.h"

namespace quillon {

/// Hands addresses to xdg-open, which knows the user's programs on every desktop.
class DesktopWorkspace final : public Workspace {
  public:
    explicit DesktopWorkspace(Diagnostics& diagnostics) : diagnostics_(diagnostics) {}

    /// Web addresses, mailto: and the schemes of programs (x-...); nothing else is opened. A
    /// failure is said.
    void open(std::string_view url) override;

  private:
    Diagnostics& diagnostics_;
};

} // namespace quillon
