#pragma once

#include "Platform/View.h"

#include <QColor>
#include <QFont>
#include <QPainter>

namespace quillon {

/// The desktop's font of this kind, for pixels at this scale (pixels per point).
[[nodiscard]] QFont desktopFont(const Font& font, double scale);

/// Draws a view and all that lies in it, as large as `size` (in points) with its top left corner at
/// the painter's origin. The painter's unit is the pixel, so that text and edges are sharp.
void paintView(QPainter& painter, const View& view, Size size, double scale, const QColor& label);

} // namespace quillon
