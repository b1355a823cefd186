#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace quillon {

enum class DesktopDirection { left, right };

/// What a window manager's own shortcut does where the row of desktops ends.
enum class RowEnd {
    stop,     // stays where it is
    wrapRow,  // goes to the other end of the same row
    wrapList, // goes through all desktops in order, whatever their rows
};

/// How the desktops are laid out, as pagers and window managers agree on it.
struct DesktopGrid {
    enum class Corner : std::uint32_t { topLeft, topRight, bottomRight, bottomLeft };

    std::uint32_t count = 1;
    std::uint32_t columns = 1;
    std::uint32_t rows = 1;
    bool byColumns = false; // numbered down the columns instead of along the rows
    Corner firstAt = Corner::topLeft;

    /// From _NET_NUMBER_OF_DESKTOPS and the values of _NET_DESKTOP_LAYOUT. Without a usable layout
    /// all desktops stand in one row.
    static DesktopGrid fromLayout(std::uint32_t count, std::span<const std::uint32_t> layout);

    /// The neighbour of a desktop, or nothing when there is none.
    [[nodiscard]] std::optional<std::uint32_t>
    neighbour(std::uint32_t desktop, DesktopDirection direction, RowEnd end) const;
};

} // namespace quillon
