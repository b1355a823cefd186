#pragma once

#include "Platform/Linux/x11/HeldDevices.h"
#include "Platform/Linux/x11/HolderEvents.h"
#include "Platform/Linux/x11/HolderGuard.h"
#include "Platform/Linux/x11/HolderOrders.h"
#include "Platform/Linux/x11/InputPoster.h"
#include "Platform/Linux/x11/LeftPressGrab.h"
#include "Platform/Linux/x11/PanicChord.h"
#include "Platform/Linux/x11/PointerProbe.h"
#include "Platform/Linux/x11/PointerWatch.h"
#include "Platform/Linux/x11/ScrollHold.h"
#include "Platform/Linux/x11/TurnedNotches.h"
#include "Platform/Linux/x11/WheelGrabs.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quillon {

/// The work of holding input, on one connection to the X server and one thread.
class HolderSession {
  public:
    HolderSession(const X11Connection& connection, const HolderHost& host);
    HolderSession(const HolderSession&) = delete;
    HolderSession& operator=(const HolderSession&) = delete;
    ~HolderSession();

    /// Returns true when told to stop, false when the connection is gone.
    bool run();

  private:
    using Clock = std::chrono::steady_clock;

    /// The pointer is looked up at most this often. Mice report up to a thousand times a second,
    /// but nobody reaches a band and turns the wheel within eight milliseconds.
    static constexpr std::chrono::milliseconds lookInterval{8};

    [[nodiscard]] bool isArmed() const { return !armed_->scrolls.empty() && geometry_ != nullptr; }
    [[nodiscard]] bool isArmedForPress() const {
        return !armed_->leftPresses.empty() && geometry_ != nullptr;
    }
    [[nodiscard]] bool isHolding() const {
        return hold_.isHolding() || leftPress_.isTaken() || poster_.buttonsDown() != 0;
    }
    [[nodiscard]] bool isInBand(const PointerProbe::State& pointer) const;
    [[nodiscard]] bool areArmedAt(const ArmedPlaces& places, Point place) const;

    void selectDeviceChanges() const;
    bool apply(HolderOrders orders);
    void adjustToArmed();
    void holdLeftPress();
    void releaseLeftPress();
    void settle();
    void disarm();

    void handleEvents();
    void handleEvent(xcb_generic_event_t& event);
    void handleExtensionEvent(const xcb_ge_generic_event_t& event);
    void panicked();
    void decideWheel(const xcb_button_press_event_t& press);
    [[nodiscard]] bool isPlainWheelReversed() const;
    void wheelReleased(const xcb_button_release_event_t& release);
    void postTurned();
    void followReversal();
    void decideLeftPress(const xcb_input_button_press_event_t& press);
    Verdict askAbout(const xcb_input_button_press_event_t& press, Point place);
    void decideNotch(ScrollNotch notch);
    [[nodiscard]] std::optional<Point> consumablePlace();
    Verdict ask(const TapQuestion& question);
    void post(const PostedButton& posted);

    void look();

    void ensureGuard();
    void tellWatchdog(bool isHolding);
    void watchdogLost();

    void waitForNews();

    const X11Connection& connection_;
    const HolderHost& host_;
    PointerProbe probe_;
    WheelGrabs wheel_;
    LeftPressGrab leftPress_;
    InputPoster poster_;
    HeldDevices devices_;
    HolderEvents events_;
    ScrollHold hold_;
    PanicChord chord_;
    std::unique_ptr<PointerWatch> watch_;
    HolderGuard guard_;
    std::vector<std::function<void()>> settled_;
    WatchdogMessage waiting_; // its last two fields, while the taps are asked about a press
    std::shared_ptr<const ArmedTaps> armed_ = std::make_shared<ArmedTaps>();
    X11Displays::GeometryRef geometry_;
    struct {
        std::optional<Point> place;
        Clock::time_point at;
        std::uint64_t posted = 0;
    } consumable_; // the last answer of consumablePlace()
    TurnedNotches turned_;
    std::uint32_t reversalSeen_ = 0; // how many changes of what is reversed
    bool isPanicked_ = false;
    bool isLookDue_ = false;
    Clock::time_point nextLook_ = Clock::now();
    bool wasLeftPressRefused_ = false;
};

} // namespace quillon
