#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/Linux/tray/CurrentEvent.h"
#include "Platform/Linux/x11/OwnWindows.h"
#include "Platform/RunLoop.h"

#include <string>

namespace quillon {

/// What the status item works with. All of it outlives the item.
struct TrayContext {
    RunLoop& runLoop;
    Diagnostics& diagnostics;
    CurrentEvent& currentEvent;
    OwnWindows& ownWindows;
    std::string busAddress; // of the session's bus; empty: there is none
};

} // namespace quillon
