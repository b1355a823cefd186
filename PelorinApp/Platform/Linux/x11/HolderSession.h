#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/EventServices.h"
#include "Platform/Linux/x11/CaughtPresses.h"
#include "Platform/Linux/x11/HeldDevices.h"
#include "Platform/Linux/x11/HolderEvents.h"
#include "Platform/Linux/x11/HolderGuard.h"
#include "Platform/Linux/x11/InputPoster.h"
#include "Platform/Linux/x11/LeftPressGrab.h"
#include "Platform/Linux/x11/PanicChord.h"
#include "Platform/Linux/x11/PointerProbe.h"
#include "Platform/Linux/x11/PointerWatch.h"
#include "Platform/Linux/x11/PostedButton.h"
#include "Platform/Linux/x11/ScrollHold.h"
#include "Platform/Linux/x11/TapExchange.h"
#include "Platform/Linux/x11/WheelGrabs.h"
#include "Platform/Linux/x11/X11Displays.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

using ArmedPlaces = std::vector<ArmedAt>;

/// Where taps could consume, by what they are interested in.
struct ArmedTaps {
    ArmedPlaces scrolls;
    ArmedPlaces leftPresses;
};

/// What the holder is to do, as the main thread last said it.
struct HolderOrders {
    bool stop = false;
    bool changed = false;    // since they were last taken
    bool isPanicked = false; // hold nothing until the tools are off
    bool hasTaps = false;    // somebody listens, armed or not: the panic chord is on
    std::shared_ptr<const ArmedTaps> armed = std::make_shared<ArmedTaps>();
    X11Displays::GeometryRef geometry;
    std::vector<PostedButton> posts; // in order, each to be carried out once

    // To be called when all that the server has sent is dealt with; each once
    std::vector<std::function<void()>> settled;
};

/// What a session needs of the program around it. All functions are called on the session's thread.
struct HolderHost {
    TapExchange& exchange;
    PostedEvents& postedEvents;
    CaughtPresses& caughtPresses;
    std::filesystem::path watchdog; // the program to start
    int ordersDescriptor;           // readable when there are new orders
    std::function<HolderOrders()> takeOrders;
    std::function<void()> wakeMain;              // a question waits in the exchange
    std::function<void(std::string)> diagnostic; // a line to print
    std::function<void()> panic;                 // the user wants all input back
};

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
    bool isPanicked_ = false;
    bool isLookDue_ = false;
    Clock::time_point nextLook_ = Clock::now();
    bool wasLeftPressRefused_ = false;
};

} // namespace quillon
