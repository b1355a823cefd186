#include "Platform/Linux/x11/AwaitDisplay.h"

#include "Platform/Linux/session/EndSignals.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <ctime>

namespace quillon {

bool awaitDisplay(Diagnostics& diagnostics) {
    constexpr timespec pause{2, 0};
    const sigset_t signals = blockEndSignals();
    bool said = false;
    while (!X11Connection::open()) {
        if (!said) {
            diagnostics.line("⚠️ No X server to be reached; waiting for one");
            said = true;
        }
        if (sigtimedwait(&signals, nullptr, &pause) > 0) {
            return false;
        }
    }
    return true;
}

} // namespace quillon
