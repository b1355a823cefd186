#pragma once

#include "Platform/Geometry.h"

#include <optional>

namespace quillon {

/// The panel that the status item lies in. Main thread only.
class PanelPlace {
  public:
    virtual ~PanelPlace() = default;

    /// In points; where nobody says which panel it is, the one that it is likely to be in. Nothing
    /// while there is none.
    [[nodiscard]] virtual std::optional<Rect> panelOnScreen() const = 0;

    /// Whether the panel runs along a side of the screen instead of its top or bottom.
    [[nodiscard]] virtual bool isVertical() const = 0;
};

} // namespace quillon
