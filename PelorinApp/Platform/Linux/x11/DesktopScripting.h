#pragma once

#include "Platform/Linux/x11/DesktopSwitch.h"
#include "Platform/ScriptingService.h"

namespace quillon {

/// The automation scripts that this program uses, carried out on an X11 desktop: a press of
/// control + left or right arrow, which the scripts ask for, means the neighbouring desktop.
class DesktopScripting final : public ScriptingService {
  public:
    /// Null for everything but those two.
    [[nodiscard]] std::unique_ptr<Script> compile(std::string_view source) override;

  private:
    DesktopSwitch desktops_;
};

} // namespace quillon
