#pragma once

#include "Platform/EventServices.h"

#include <cstdint>

namespace quillon {

/// Keys that go to the system itself, with the codes that its keyboards send.
enum class SystemKey : std::int64_t {
    soundUp = 0,
    soundDown = 1,
    play = 16,
    next = 17,
    previous = 18,
};

/// Presses the key and lets it go, as a keyboard would. Nothing is posted unless the system makes
/// both events: a key must not stay down.
void postSystemKey(EventServices& events, SystemKey key);

} // namespace quillon
