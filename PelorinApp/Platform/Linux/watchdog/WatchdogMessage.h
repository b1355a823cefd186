#pragma once

#include <chrono>
#include <cstdint>

namespace quillon {

/// What the program tells its watchdog: at every change, and again and again while it holds input.
struct WatchdogMessage {
    std::uint32_t isHolding = 0;
    std::uint32_t buttonsDown = 0; // posted by the program; a bit for each

    // A press that the program is making up its mind about, if any: the device that it came from,
    // and by which of its numbers the device of the XTEST extension presses the same button.
    std::uint32_t waitingDevice = 0;
    std::uint32_t waitingButton = 0;

    bool operator==(const WatchdogMessage&) const = default;
};

/// The byte with which the watchdog answers once, when it is ready to intervene.
inline constexpr char watchdogReady = 'r';

/// So long may the program hold input in silence. It speaks twice in that time.
inline constexpr std::chrono::milliseconds watchdogPatience{250};
inline constexpr std::chrono::milliseconds heartbeatInterval{120};

} // namespace quillon
