#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// The property's 32-bit values; nothing when it is not set or has another format.
[[nodiscard]] std::optional<std::vector<std::uint32_t>>
cardinals(const X11Connection& connection, xcb_window_t window, xcb_atom_t property);

/// The first of them.
[[nodiscard]] std::optional<std::uint32_t> cardinal(const X11Connection& connection,
                                                    xcb_window_t window, xcb_atom_t property);

/// The property's bytes; nothing when it is not set.
[[nodiscard]] std::optional<std::string> text(const X11Connection& connection, xcb_window_t window,
                                              xcb_atom_t property);

} // namespace quillon
