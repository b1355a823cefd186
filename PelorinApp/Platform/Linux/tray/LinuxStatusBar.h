#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/Linux/tray/CurrentEvent.h"
#include "Platform/Linux/tray/LinuxStatusItem.h"
#include "Platform/Linux/tray/PanelPlace.h"
#include "Platform/RunLoop.h"
#include "Platform/StatusBar.h"

#include <memory>

namespace quillon {

/// The desktop's tray. It has room for one item of this program. A QGuiApplication must exist
/// first, and a QApplication for tool tips to be shown.
class LinuxStatusBar final : public StatusBar, public PanelPlace {
  public:
    /// All that is given must outlive this object and its item.
    LinuxStatusBar(RunLoop& runLoop, Diagnostics& diagnostics, CurrentEvent& currentEvent)
        : runLoop_(runLoop), diagnostics_(diagnostics), currentEvent_(currentEvent) {}

    /// Null while there is one already.
    std::shared_ptr<StatusItem> statusItem(double length) override;

    [[nodiscard]] double thickness() const override;

    [[nodiscard]] std::optional<Rect> panelOnScreen() const override;
    [[nodiscard]] bool isVertical() const override;

  private:
    RunLoop& runLoop_;
    Diagnostics& diagnostics_;
    CurrentEvent& currentEvent_;
    std::weak_ptr<LinuxStatusItem> item_;
};

} // namespace quillon
