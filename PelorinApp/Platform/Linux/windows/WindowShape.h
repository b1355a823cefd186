#pragma once

#include <QRect>
#include <QWindow>

#include <vector>

namespace quillon {

/// The rows of pixels of a rectangle with round corners, top down, equal ones in one. All in
/// pixels. A pixel belongs to it when its middle does.
[[nodiscard]] std::vector<QRect> roundedRows(QSize size, double radius);

/// Cuts the corners of a window's pixels, for desktops where none is translucent; a radius of 0
/// gives them back. In units of the toolkit. Nothing happens on another platform than X11.
void cutCorners(QWindow& window, double radius);

} // namespace quillon
