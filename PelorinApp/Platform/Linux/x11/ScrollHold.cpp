#include "Platform/Linux/x11/ScrollHold.h"

#include <utility>

namespace quillon {

namespace {

using Clock = std::chrono::steady_clock;

/// How long another program must hold a device for that to be said.
constexpr std::chrono::seconds lastingRefusal{1};

std::string refusalLine(const std::vector<std::uint8_t>& buttons) {
    std::string line = "⚠️ Another program holds wheel button";
    line += buttons.size() == 1 ? "" : "s";
    for (const std::uint8_t button : buttons) {
        line += ' ';
        line += std::to_string(button);
    }
    line += "; trying again when the pointer next comes to the edge";
    return line;
}

} // namespace

const PointerDevices& ScrollHold::pointers() {
    if (std::exchange(arePointersStale_, false)) {
        pointers_ = queryPointerDevices(connection_, devices_.ids());
        devices_.follow(pointers_);
    }
    return pointers_;
}

bool ScrollHold::isPointerTakenByOther() {
    if (!probe_.isGrabbed(pointers_.master)) {
        return false;
    }
    // It may be a plain wheel that we hold. Then its press has come before the answer.
    events_.readEarly();
    return !wheel_.isActive();
}

ScrollHold::Next ScrollHold::holdHere(const PointerProbe::State& pointer, bool hasWatchdog,
                                      xcb_input_device_id_t mover) {
    // Wheel buttons only while no device with axes moves the pointer by itself. They send their
    // scrolling also as presses; a grab would catch those and wait for a release that, with the
    // device held by then, does not come there.
    if (wheel_.areTaken() && !devices_.areAllHeld(pointers_)) {
        wheel_.release();
    }
    Next next = Next::whenItMoves;
    if (!pointers_.scrolling.empty() && !pointer.isButtonDown) {
        next = holdDevices(hasWatchdog, mover);
    }
    if (!wheel_.areTaken() && devices_.areAllHeld(pointers_)) {
        const auto refused = wheel_.take();
        if (refused != refusedWheel_ && !refused.empty()) {
            diagnostic_(refusalLine(refused));
        }
        refusedWheel_ = refused;
    }
    return next;
}

ScrollHold::Next ScrollHold::holdDevices(bool hasWatchdog, xcb_input_device_id_t mover) {
    if (!hasWatchdog || isPointerTakenByOther()) {
        letGo(); // an open menu or a locked screen: its scrolling is not ours
        return Next::whenItMoves;
    }
    if (wheel_.isActive()) {
        return Next::soon; // the release may be a device's own: it must come before that is taken
    }
    if (devices_.take(pointers_, mover)) {
        refusedSince_.reset();
        wasDeviceRefused_ = false;
        return Next::whenItMoves;
    }
    // Whoever is being clicked has the device for as long as that takes: not worth a word.
    if (!refusedSince_) {
        refusedSince_ = Clock::now();
    }
    if (Clock::now() - *refusedSince_ >= lastingRefusal &&
        !std::exchange(wasDeviceRefused_, true)) {
        diagnostic_("⚠️ Another program holds a mouse or touchpad; trying again whenever the "
                    "pointer moves at the edge");
    }
    return Next::whenItMoves;
}

ScrollHold::Next ScrollHold::leave(const PointerProbe::State& pointer) {
    refusedSince_.reset();
    if (wheel_.areTaken()) {
        wheel_.release();
    }
    // A button that is down belongs to a device that is held: its release must come the same way.
    if (!devices_.areHeld() || pointer.isButtonDown) {
        return Next::whenItMoves;
    }
    // Between two events, if that can be had: what comes meanwhile would be overtaken by the next.
    constexpr int mostTries = 5;
    if (!events_.isQuiet() && ++noisyTries_ < mostTries) {
        return Next::atOnce;
    }
    noisyTries_ = 0;
    devices_.release();
    return Next::whenItMoves;
}

void ScrollHold::letGo() {
    if (wheel_.areTaken()) {
        wheel_.release();
    }
    if (devices_.areHeld()) {
        devices_.release();
    }
}

void ScrollHold::settleRelease() {
    if (devices_.isReleasing()) {
        devices_.finishRelease();
    }
}

} // namespace quillon
