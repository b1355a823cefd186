#pragma once

#include "Platform/Geometry.h"

#include <optional>

namespace quillon {

/// The panel that the status item lies in. Main thread only.
class PanelPlace {
  public:
    virtual ~PanelPlace() = default;

    /// In points; nothing while the item is in no panel, or nobody says which.
    [[nodiscard]] virtual std::optional<Rect> panelOnScreen() const = 0;

    /// Whether the panel runs along a side of the screen instead of its top or bottom.
    [[nodiscard]] virtual bool isVertical() const = 0;
};

} // namespace quillon
