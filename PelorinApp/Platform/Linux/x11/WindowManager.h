#pragma once

#include "Platform/Linux/x11/DesktopGrid.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <string>

namespace quillon {

/// The name of the running window manager in lower case, as it gives it; empty when there is none.
[[nodiscard]] std::string windowManagerName(const X11Connection& connection);

/// What this window manager's shortcuts for the neighbouring desktop do at the end of a row: as its
/// configuration says where we know how to ask, else as it does when left alone.
[[nodiscard]] RowEnd rowEndOf(const X11Connection& connection, const std::string& name);

/// Reads openbox's configuration: the "wrap" of its action for the desktop to the left.
[[nodiscard]] RowEnd rowEndOfOpenboxConfiguration(const std::string& xml);

} // namespace quillon
