#pragma once

#include "Platform/Linux/session/WakeUp.h"
#include "Platform/Linux/x11/HolderSession.h"
#include "Platform/Linux/x11/TapExchange.h"
#include "Platform/Linux/x11/X11Displays.h"

#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace quillon {

/// Holds the user's wheels, mice and touchpads, and only while the pointer is where a tap could
/// consume.
///
/// One holder serves all taps of the program, on a thread and a connection of its own: the main
/// thread may be busy, but the pointer must move on. With nothing armed it holds nothing, follows
/// nothing and sleeps.
class InputHolder {
  public:
    /// What the holder tells the rest of the program. All are called on the holder's thread.
    struct Listener {
        std::function<void()> wakeMain;              // a question waits in the exchange
        std::function<void(std::string)> diagnostic; // a line to print
        std::function<void()> panic; // the user wants all input back; nothing is held any more
        std::function<void()> lost;  // the server is gone; the thread ends
    };

    InputHolder(TapExchange& exchange, PostedEvents& postedEvents, CaughtPresses& caughtPresses,
                const ReversedDevices& reversed, std::filesystem::path watchdog, Listener listener);
    InputHolder(const InputHolder&) = delete;
    InputHolder& operator=(const InputHolder&) = delete;

    /// Lets go of everything and ends the thread.
    ~InputHolder();

    /// Whether there are taps at all, and where they could consume, from now on. Any thread, as
    /// all that follow.
    void setTaps(bool exist, ArmedTaps armed);
    void setGeometry(X11Displays::GeometryRef geometry);

    /// Posts it where the pointer is then, after all that was posted before and after the event
    /// that was answered last.
    void post(PostedButton posted);

    /// Calls `done`, on the holder's thread, when all is dealt with that the server has sent so
    /// far.
    void settle(std::function<void()> done);

    /// After a panic nothing is held, whatever is said, until this is called.
    void resume();

  private:
    void run();
    void panicked();
    bool pause();
    HolderOrders takeOrders();
    template <class Change>
    void order(const Change& change);

    TapExchange& exchange_;
    PostedEvents& postedEvents_;
    CaughtPresses& caughtPresses_;
    const ReversedDevices& reversed_;
    std::filesystem::path watchdog_;
    Listener listener_;
    WakeUp ordersChanged_;
    std::mutex mutex_;
    HolderOrders orders_;
    std::thread thread_;
};

} // namespace quillon
