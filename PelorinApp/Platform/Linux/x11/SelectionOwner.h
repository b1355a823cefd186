#pragma once

#include "Platform/Linux/x11/X11Connection.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

/// The name of a selection that there is once for each screen.
[[nodiscard]] std::string selectionOfScreen(std::string_view name, const X11Connection& connection);

/// The window that owns a selection, whose changes and end the connection then gets to know;
/// nothing when there is none. Waits for answers of the server.
[[nodiscard]] std::optional<xcb_window_t> followSelectionOwner(const X11Connection& connection,
                                                               xcb_atom_t selection);

} // namespace quillon
