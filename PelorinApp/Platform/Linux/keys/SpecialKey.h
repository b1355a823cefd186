#pragma once

#include "Platform/EventServices.h"

#include <cstdint>
#include <optional>

namespace quillon {

/// The keys beside the letters that tools press.
enum class SpecialKey : std::uint8_t { volumeUp, volumeDown, playPause, next, previous };

/// Whether programs that play something are what it is for.
[[nodiscard]] constexpr bool isMediaKey(SpecialKey key) {
    return key != SpecialKey::volumeUp && key != SpecialKey::volumeDown;
}

/// The key that goes down by this event. Nothing for one that goes up, and for any other event.
[[nodiscard]] std::optional<SpecialKey> pressedKey(const SystemDefinedEvent& event);

/// Its keysym.
[[nodiscard]] std::uint32_t keysymOf(SpecialKey key);

} // namespace quillon
