#pragma once

#include "Platform/EventServices.h"
#include "Platform/Linux/reversal/ReversedDevices.h"
#include "Platform/Linux/x11/CaughtPresses.h"
#include "Platform/Linux/x11/PostedButton.h"
#include "Platform/Linux/x11/PostedEvents.h"
#include "Platform/Linux/x11/TapExchange.h"
#include "Platform/Linux/x11/X11Displays.h"

#include <filesystem>
#include <functional>
#include <memory>
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
    const ReversedDevices& reversed;
    std::filesystem::path watchdog; // the program to start
    int ordersDescriptor;           // readable when there are new orders
    std::function<HolderOrders()> takeOrders;
    std::function<void()> wakeMain;              // a question waits in the exchange
    std::function<void(std::string)> diagnostic; // a line to print
    std::function<void()> panic;                 // the user wants all input back
};

} // namespace quillon
