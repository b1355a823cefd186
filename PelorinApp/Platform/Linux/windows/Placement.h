#pragma once

#include "Platform/Geometry.h"
#include "Platform/Popover.h"

#include <optional>
#include <span>

namespace quillon {

/// What is around a popover. All rectangles are in points, origin at the main screen's bottom left.
struct PopoverSite {
    Rect anchor;
    Rect screen;
    std::optional<Rect> panel;
    bool panelIsVertical = false;
};

/// Where a popover of this size belongs: off the panel that the anchor lies in, toward the middle
/// of the screen; beside an anchor that lies in no panel, on its preferred edge if there is room.
/// Centred on the anchor as far as the screen allows, `gap` points away from it and from the ends
/// of the screen, and always wholly on the screen; of one that is larger than the screen, the upper
/// left is.
[[nodiscard]] Rect placePopover(const PopoverSite& site, RectEdge preferredEdge, Size size,
                                double gap);

/// Where one without an anchor belongs: the top right of the free area of a screen.
[[nodiscard]] Rect placePopoverWithoutAnchor(const Rect& screen, const std::optional<Rect>& panel,
                                             bool panelIsVertical, Size size, double gap);

/// Where a menu of this size belongs whose upper left corner is to be at `corner`, without covering
/// `around`: above it where there is no room below, beside it where there is neither.
[[nodiscard]] Rect placeMenu(Point corner, const Rect& around, const Rect& screen, Size size);

/// What a popover can have at most beside a panel on this screen.
[[nodiscard]] Size roomBeside(const std::optional<Rect>& panel, bool isVertical, const Rect& screen,
                              double gap);

/// A menu whose corner would be at this point of a panel: beside the panel, on the side of the
/// screen's middle.
[[nodiscard]] Rect placeMenuBeside(const Rect& panel, bool isVertical, Point corner,
                                   const Rect& screen, Size size);

/// The screen that has the middle of the rectangle, else the nearest one. There must be a screen.
[[nodiscard]] Rect screenOf(const Rect& rect, std::span<const Rect> screens);

} // namespace quillon
