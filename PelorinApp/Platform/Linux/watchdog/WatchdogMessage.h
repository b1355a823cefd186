#pragma once

#include <chrono>
#include <cstdint>

namespace quillon {

/// What the program tells its watchdog: at every change, and again and again while it holds input.
struct WatchdogMessage {
    std::uint32_t isHolding = 0;
    std::uint32_t buttonsDown = 0; // posted on behalf of held devices; a bit for each

    bool operator==(const WatchdogMessage&) const = default;
};

/// The byte with which the watchdog answers once, when it is ready to intervene.
inline constexpr char watchdogReady = 'r';

/// So long may the program hold input in silence. It speaks twice in that time.
inline constexpr std::chrono::milliseconds watchdogPatience{250};
inline constexpr std::chrono::milliseconds heartbeatInterval{120};

} // namespace quillon
