#pragma once

#include "Platform/Geometry.h"

#include <functional>
#include <memory>
#include <string_view>

namespace quillon {

/// What a popover shows. It lives as long as the popover, shown or not. Main thread only.
class PopoverContent {
  public:
    virtual ~PopoverContent() = default;

    /// The NSView that shows it; the content owns it.
    [[nodiscard]] virtual void* nativeView() = 0;

    /// In points.
    [[nodiscard]] virtual Size size() const = 0;

    /// Whether it is worth being drawn.
    virtual void setVisible(bool visible) = 0;

    /// Whether it shows a question that is to be answered first.
    [[nodiscard]] virtual bool hasAttachedSheet() const = 0;
};

/// What it tells.
struct PopoverContentHandlers {
    std::function<void()> escaped; // Escape, and nothing of its own to go back from
    std::function<void()> resized;
};

/// Makes the content that is the screen of this name.
using PopoverContents = std::function<std::unique_ptr<PopoverContent>(
    std::string_view screen, PopoverContentHandlers handlers)>;

} // namespace quillon
