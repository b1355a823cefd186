#include "Tools/SystemKey.h"

namespace quillon {

namespace {

enum class KeyState : std::int64_t { down = 0xA00, up = 0xB00 };

EventRef keyEvent(EventServices& events, SystemKey key, KeyState state) {
    constexpr std::int16_t auxiliaryControlButtons = 8;
    constexpr std::int64_t upperHalf = 0x10000;
    return events.createSystemDefinedEvent({
        .location = {},
        .modifierFlags = static_cast<std::uint64_t>(state),
        .subtype = auxiliaryControlButtons,
        .data1 = static_cast<std::int64_t>(key) * upperHalf + static_cast<std::int64_t>(state),
        .data2 = -1,
    });
}

} // namespace

void postSystemKey(EventServices& events, SystemKey key) {
    const EventRef down = keyEvent(events, key, KeyState::down);
    const EventRef up = keyEvent(events, key, KeyState::up);
    if (down && up) {
        events.post(TapLocation::hid, *down);
        events.post(TapLocation::hid, *up);
    }
}

} // namespace quillon
