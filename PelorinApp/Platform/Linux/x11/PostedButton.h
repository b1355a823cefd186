#pragma once

#include "Platform/FieldEvent.h"

#include <cstdint>
#include <optional>

namespace quillon {

/// A press or release that a tool has made. `button` is the number that applications see.
struct PostedButton {
    std::uint8_t button = 0;
    bool isDown = false;
    bool operator==(const PostedButton&) const = default;
};

/// Nothing for an event of no mouse button.
[[nodiscard]] inline std::optional<PostedButton> postedButton(const FieldEvent& event) {
    constexpr std::uint8_t left = 1;
    constexpr std::uint8_t middle = 2;
    constexpr std::uint8_t right = 3;
    switch (event.type()) {
    case EventType::leftMouseDown:
        return PostedButton{left, true};
    case EventType::leftMouseUp:
        return PostedButton{left, false};
    case EventType::rightMouseDown:
        return PostedButton{right, true};
    case EventType::rightMouseUp:
        return PostedButton{right, false};
    case EventType::otherMouseDown:
        return PostedButton{middle, true};
    case EventType::otherMouseUp:
        return PostedButton{middle, false};
    default:
        return std::nullopt;
    }
}

} // namespace quillon
