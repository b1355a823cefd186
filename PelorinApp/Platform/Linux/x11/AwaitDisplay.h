#pragma once

#include "Platform/Diagnostics.h"

namespace quillon {

/// Whether the X server of $DISPLAY can be reached.
[[nodiscard]] bool isDisplayThere();

/// Says that there is none, and waits until it can be reached. False when SIGINT,
/// SIGTERM or SIGHUP asked the program to end meanwhile. Leaves these signals blocked.
///
/// To be called before there is a toolkit: that cannot live without a display.
[[nodiscard]] bool awaitDisplay(Diagnostics& diagnostics);

} // namespace quillon
