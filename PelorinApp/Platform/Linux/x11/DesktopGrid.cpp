#include "Platform/Linux/x11/DesktopGrid.h"

namespace quillon {

namespace {
constexpr std::uint32_t verticalOrientation = 1;
constexpr std::uint32_t cornerCount = 4;
constexpr std::uint32_t mostDesktops = 1000;

std::uint32_t divideUp(std::uint32_t a, std::uint32_t b) { return (a + b - 1) / b; }
} // namespace

DesktopGrid DesktopGrid::fromLayout(std::uint32_t count, std::span<const std::uint32_t> layout) {
    DesktopGrid grid;
    grid.count = count;
    grid.columns = count;
    if (layout.size() < 3 || count == 0) {
        return grid;
    }
    std::uint32_t columns = layout[1];
    std::uint32_t rows = layout[2];
    if (columns > mostDesktops || rows > mostDesktops || (columns == 0 && rows == 0)) {
        return grid;
    }
    // Either may be 0, which means as many as it takes.
    columns = columns == 0 ? divideUp(count, rows) : columns;
    rows = rows == 0 ? divideUp(count, columns) : rows;
    if (columns * rows < count) {
        return grid;
    }
    grid.columns = columns;
    grid.rows = rows;
    grid.byColumns = layout[0] == verticalOrientation;
    if (layout.size() > 3 && layout[3] < cornerCount) {
        grid.firstAt = static_cast<Corner>(layout[3]);
    }
    return grid;
}

std::optional<std::uint32_t> DesktopGrid::neighbour(std::uint32_t desktop,
                                                    DesktopDirection direction, RowEnd end) const {
    if (desktop >= count) {
        return std::nullopt;
    }
    if (end == RowEnd::wrapList) {
        const std::uint32_t step = direction == DesktopDirection::right ? 1 : count - 1;
        const std::uint32_t next = (desktop + step) % count;
        return next != desktop ? std::optional(next) : std::nullopt;
    }
    // Numbering from the right mirrors the row: left is then where the numbers grow.
    const bool fromRight = firstAt == Corner::topRight || firstAt == Corner::bottomRight;
    const bool forward = (direction == DesktopDirection::right) != fromRight;
    const std::uint32_t row = byColumns ? desktop % rows : desktop / columns;
    std::uint32_t column = byColumns ? desktop / rows : desktop % columns;
    // A last row or column may be incomplete: places without a desktop are stepped over.
    for (std::uint32_t tries = 0; tries < columns; ++tries) {
        const bool atEnd = column == (forward ? columns - 1 : 0);
        if (atEnd && end == RowEnd::stop) {
            return std::nullopt;
        }
        column = (column + (forward ? 1 : columns - 1)) % columns;
        const std::uint32_t next = byColumns ? column * rows + row : row * columns + column;
        if (next < count) {
            return next != desktop ? std::optional(next) : std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace quillon
