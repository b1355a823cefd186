#include "Platform/Linux/x11/AwaitDisplay.h"

#include "Platform/Linux/session/EndSignals.h"
#include "Platform/Linux/x11/X11Connection.h"

#include <ctime>

namespace quillon {

bool isDisplayThere() { return X11Connection::open() != nullptr; }

bool awaitDisplay(Diagnostics& diagnostics) {
    constexpr timespec pause{2, 0};
    diagnostics.line("⚠️ No X server to be reached; waiting for one");
    const sigset_t signals = blockEndSignals();
    while (!isDisplayThere()) {
        if (sigtimedwait(&signals, nullptr, &pause) > 0) {
            return false;
        }
    }
    return true;
}

} // namespace quillon
