#include "Platform/Linux/keys/SpecialKey.h"

namespace quillon {

std::optional<SpecialKey> pressedKey(const SystemDefinedEvent& event) {
    constexpr std::int16_t keys = 8; // among the subtypes
    constexpr std::int64_t down = 0xA00;
    constexpr int halfBits = 16;
    constexpr std::int64_t half = 0xFFFF;
    if (event.subtype != keys || (event.data1 & half) != down) {
        return std::nullopt;
    }
    switch (event.data1 >> halfBits) {
    case 0:
        return SpecialKey::volumeUp;
    case 1:
        return SpecialKey::volumeDown;
    case 16:
        return SpecialKey::playPause;
    case 17:
        return SpecialKey::next;
    case 18:
        return SpecialKey::previous;
    default:
        return std::nullopt;
    }
}

std::uint32_t keysymOf(SpecialKey key) {
    switch (key) {
    case SpecialKey::volumeUp:
        return 0x1008FF13; // XF86AudioRaiseVolume
    case SpecialKey::volumeDown:
        return 0x1008FF11; // XF86AudioLowerVolume
    case SpecialKey::playPause:
        return 0x1008FF14; // XF86AudioPlay
    case SpecialKey::next:
        return 0x1008FF17; // XF86AudioNext
    case SpecialKey::previous:
        return 0x1008FF16; // XF86AudioPrev
    }
    return 0;
}

} // namespace quillon
