#include "Platform/Linux/session/EndSignals.h"

#include <initializer_list>

namespace quillon {

sigset_t blockEndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

} // namespace quillon
