#pragma once

#include "Platform/Linux/x11/HeldDevices.h"
#include "Platform/Linux/x11/HolderEvents.h"
#include "Platform/Linux/x11/InputPoster.h"
#include "Platform/Linux/x11/PointerDevices.h"
#include "Platform/Linux/x11/PointerProbe.h"
#include "Platform/Linux/x11/WheelGrabs.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// Holds what scrolls while the pointer is in a band, and gives it back when that is safe.
class ScrollHold {
  public:
    /// All that is named here outlives this object. `diagnostic` prints a line.
    ScrollHold(const X11Connection& connection, const PointerProbe& probe, WheelGrabs& wheel,
               HeldDevices& devices, HolderEvents& events,
               std::function<void(std::string)> diagnostic)
        : connection_(connection), probe_(probe), wheel_(wheel), devices_(devices), events_(events),
          diagnostic_(std::move(diagnostic)) {}

    [[nodiscard]] bool isHolding() const {
        return wheel_.areTaken() || wheel_.isActive() || devices_.areHeld();
    }

    /// The devices that move the pointer; asks the server when they have changed. Not while an
    /// event of one of them is being handled: some may be forgotten.
    const PointerDevices& pointers();

    /// The pointer itself, as it was known last.
    [[nodiscard]] xcb_input_device_id_t master() const { return pointers_.master; }
    void pointersHaveChanged() { arePointersStale_ = true; }

    /// Whether another program has the pointer for itself, as for a menu.
    [[nodiscard]] bool isPointerTakenByOther();

    /// When the pointer must be looked at again.
    enum class Next { whenItMoves, soon, atOnce };

    /// The pointer is in a band. Devices are held only with a watchdog, and `mover` is the one that
    /// moved the pointer last.
    Next holdHere(const PointerProbe::State& pointer, bool hasWatchdog,
                  xcb_input_device_id_t mover);

    /// It is in none.
    Next leave(const PointerProbe::State& pointer);

    /// Gives everything back now. What the devices had sent before is still to be dealt with, and
    /// then settleRelease() to be called.
    void letGo();
    void settleRelease();

  private:
    Next holdDevices(bool hasWatchdog, xcb_input_device_id_t mover);

    const X11Connection& connection_;
    const PointerProbe& probe_;
    WheelGrabs& wheel_;
    HeldDevices& devices_;
    HolderEvents& events_;
    std::function<void(std::string)> diagnostic_;
    PointerDevices pointers_;
    bool arePointersStale_ = true;
    int noisyTries_ = 0;
    std::vector<std::uint8_t> refusedWheel_; // what stood in the way is said once per change
    std::optional<std::chrono::steady_clock::time_point> refusedSince_; // some device
    bool wasDeviceRefused_ = false;
};

} // namespace quillon
