#pragma once

#include "Platform/MacOS/PopoverContent.h"
#include "Platform/Quick/ScreenView.h"

namespace quillon {

/// A screen in Qt Quick, whose window is a view of the system's. A QGuiApplication must exist.
class QuickContent final : public PopoverContent {
  public:
    QuickContent(const QuickScreen& screen, PopoverContentHandlers handlers);

    [[nodiscard]] void* nativeView() override;
    [[nodiscard]] Size size() const override;
    void setVisible(bool visible) override { view_.setVisible(visible); }
    [[nodiscard]] bool hasAttachedSheet() const override { return view_.hasAttachedSheet(); }

  private:
    ScreenView view_;
};

} // namespace quillon
