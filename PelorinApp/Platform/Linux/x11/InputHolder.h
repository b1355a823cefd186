#pragma once

#include "Platform/EventServices.h"
#include "Platform/Linux/session/WakeUp.h"
#include "Platform/Linux/x11/PointerWatch.h"
#include "Platform/Linux/x11/TapExchange.h"
#include "Platform/Linux/x11/WheelGrabs.h"
#include "Platform/Linux/x11/X11Displays.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quillon {

/// Holds the user's wheel, and only while the pointer is where a tap could consume.
///
/// One holder serves all taps of the program, on a thread and a connection of its own: the main
/// thread may be busy, but the pointer must move on. With nothing armed it holds nothing, follows
/// nothing and sleeps.
class InputHolder {
  public:
    using ArmedPlaces = std::vector<ArmedAt>;

    /// What the holder tells the rest of the program. All are called on the holder's thread.
    struct Listener {
        std::function<void()> wakeMain;              // a question waits in the exchange
        std::function<void(std::string)> diagnostic; // a line to print
        std::function<void()> lost;                  // the connection is gone; the thread ends
    };

    InputHolder(TapExchange& exchange, Listener listener);
    InputHolder(const InputHolder&) = delete;
    InputHolder& operator=(const InputHolder&) = delete;

    /// Lets go of everything and ends the thread.
    ~InputHolder();

    /// Where taps could consume, from now on; nothing held when it is empty. Any thread.
    void setArmed(ArmedPlaces places);
    void setGeometry(X11Displays::GeometryRef geometry);

  private:
    struct Orders {
        bool stop = false;
        bool changed = false;
        std::shared_ptr<const ArmedPlaces> armed = std::make_shared<ArmedPlaces>();
        X11Displays::GeometryRef geometry;
    };
    class Session;

    void run();
    Orders takeOrders();

    TapExchange& exchange_;
    Listener listener_;
    WakeUp ordersChanged_;
    std::mutex mutex_;
    Orders orders_;
    std::thread thread_;
};

} // namespace quillon
