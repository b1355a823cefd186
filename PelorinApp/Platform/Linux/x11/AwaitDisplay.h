#pragma once

#include "Platform/Diagnostics.h"

namespace quillon {

/// Waits until the X server of $DISPLAY can be reached, saying so when it must. False when SIGINT,
/// SIGTERM or SIGHUP asked the program to end meanwhile. Leaves these signals blocked.
///
/// To be called before there is a toolkit: that cannot live without a display.
[[nodiscard]] bool awaitDisplay(Diagnostics& diagnostics);

} // namespace quillon
