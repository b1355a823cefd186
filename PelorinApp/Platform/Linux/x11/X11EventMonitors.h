#pragma once

#include "Platform/EventMonitors.h"
#include "Platform/Linux/x11/AwaitedVerdicts.h"
#include "Platform/Linux/x11/CaughtPresses.h"
#include "Platform/Linux/x11/OwnWindows.h"
#include "Platform/Linux/x11/PostedEvents.h"
#include "Platform/Linux/x11/RawButtons.h"

#include <QObject>

#include <cstdint>
#include <memory>
#include <vector>

namespace quillon {

/// Monitors of mouse buttons and scrolling on an X11 desktop, by raw events of the input extension.
/// They have a connection of their own, and only while there is a monitor.
///
/// Scrolling is heard of as presses of the wheel's buttons, one for each notch also of devices that
/// scroll by axes: motion would wake the program each time the mouse moves. All deltas are whole
/// notches therefore, those in points not excepted, and a touchpad's are told like a wheel's.
///
/// What a device does while this program holds it the server tells the holder alone: it is heard of
/// when it is posted on.
class X11EventMonitors final : public EventMonitors {
  public:
    /// All must outlive this object. `postedEvents` knows what this program posts by itself,
    /// `caughtPresses` what it consumes. A handler must not destroy this object.
    X11EventMonitors(const OwnWindows& ownWindows, PostedEvents& postedEvents,
                     CaughtPresses& caughtPresses);
    ~X11EventMonitors() override;

    /// Also null for a mask without any mouse button or scrolling.
    EventMonitorRef addGlobalMonitor(std::uint64_t mask, Handler handler,
                                     std::string_view owner) override;
    void setInvalidationHandler(EventMonitor& monitor, std::function<void()> handler) override;

    /// Nothing wakes the program on behalf of a monitor that is not armed, and it hears nothing.
    void setArmed(EventMonitor& monitor, bool armed) override;

  private:
    class Monitor;

    [[nodiscard]] bool connect();
    void disconnect();
    void connectionLost();
    void invalidateLost();
    void selectWanted();
    void heard(const RawButton& raw);
    [[nodiscard]] bool goesToThisProgram(const RawButton& raw, EventType type);
    void tell(const MonitoredEvent& event);
    void forgetRemoved();

    const OwnWindows& ownWindows_;
    PostedEvents& postedEvents_;
    AwaitedVerdicts verdicts_;
    std::vector<std::weak_ptr<Monitor>> monitors_;
    std::vector<std::weak_ptr<Monitor>> lost_; // that have yet to be told so
    std::uint64_t wanted_ = 0;                 // eventMask bits of those that are armed
    std::shared_ptr<RawButtons> buttons_;
    int telling_ = 0;                         // events that are being told, one within another
    bool wereSomeRemoved_ = false;            // meanwhile
    std::shared_ptr<X11EventMonitors*> self_; // what monitors hold weakly
    QObject queue_;                           // for what the event loop is to do later
};

} // namespace quillon
