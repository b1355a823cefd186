#pragma once

#include "Platform/Linux/tray/LinuxStatusItem.h"
#include "Platform/Linux/tray/PanelPlace.h"
#include "Platform/Linux/tray/TrayContext.h"
#include "Platform/StatusBar.h"

#include <memory>

namespace quillon {

/// The desktop's tray. It has room for one item of this program. A QGuiApplication must exist
/// first, and a QApplication for tool tips to be shown.
class LinuxStatusBar final : public StatusBar, public PanelPlace {
  public:
    /// The context must outlive this object and its item.
    explicit LinuxStatusBar(const TrayContext& context) : context_(context) {}

    /// Null while there is one already.
    std::shared_ptr<StatusItem> statusItem(double length) override;

    [[nodiscard]] double thickness() const override;

    [[nodiscard]] std::optional<Rect> panelOnScreen() const override;
    [[nodiscard]] bool isVertical() const override;

  private:
    const TrayContext& context_;
    std::weak_ptr<LinuxStatusItem> item_;
};

} // namespace quillon
