#include "Platform/Linux/windows/WindowShape.h"

#include <QGuiApplication>

#include <algorithm>
#include <cmath>

#include <xcb/shape.h>

namespace quillon {

std::vector<QRect> roundedRows(QSize size, double radius) {
    radius = std::clamp(radius, 0.0, std::min(size.width(), size.height()) / 2.0);
    std::vector<QRect> rows;
    for (int y = 0; y < size.height(); ++y) {
        const double middle = y + 0.5;
        const double fromCentre =
            std::max({radius - middle, middle - (size.height() - radius), 0.0});
        const double inset = radius - std::sqrt(radius * radius - fromCentre * fromCentre);
        const int cut = static_cast<int>(std::lround(inset));
        const QRect row(cut, y, size.width() - 2 * cut, 1);
        if (!rows.empty() && rows.back().x() == row.x()) {
            rows.back().setBottom(y);
        } else if (row.width() > 0) {
            rows.push_back(row);
        }
    }
    return rows;
}

void cutCorners(QWindow& window, double radius) {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    if (radius <= 0) {
        xcb_shape_mask(x11->connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, id, 0, 0,
                       XCB_PIXMAP_NONE);
        return;
    }
    const double ratio = window.devicePixelRatio();
    std::vector<xcb_rectangle_t> rectangles;
    for (const QRect& row : roundedRows((QSizeF(window.size()) * ratio).toSize(), radius * ratio)) {
        rectangles.push_back(
            {static_cast<std::int16_t>(row.x()), static_cast<std::int16_t>(row.y()),
             static_cast<std::uint16_t>(row.width()), static_cast<std::uint16_t>(row.height())});
    }
    xcb_shape_rectangles(x11->connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_YX_SORTED, id, 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

} // namespace quillon
