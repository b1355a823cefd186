#pragma once

#include "Platform/Event.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace quillon {

/// What a listener is told of an event. Deltas are those of a scroll, up and right being positive;
/// `scrolling` ones in points where the device scrolls precisely, else in lines like the plain
/// ones.
struct MonitoredEvent {
    EventType type = EventType::leftMouseDown;
    MouseButton buttonNumber = MouseButton::left;
    double scrollingDeltaX = 0;
    double scrollingDeltaY = 0;
    double deltaX = 0;
    double deltaY = 0;
};

/// An opaque token. Letting go of the last reference removes the monitor.
class EventMonitor {
  public:
    virtual ~EventMonitor() = default;
};
using EventMonitorRef = std::shared_ptr<EventMonitor>;

/// Listeners to input that goes to other programs. Main thread only.
///
/// They get copies after the taps are through with an event: nothing that was consumed, the
/// rewritten form otherwise, nothing that this program posted, nothing that goes to its own
/// windows, and each event once.
class EventMonitors {
  public:
    using Handler = std::function<void(const MonitoredEvent&)>;

    virtual ~EventMonitors() = default;

    /// `mask` holds eventMask bits, of mouse buttons and scrolling. The handler is called on the
    /// main thread. `owner` is the id of the tool, empty for the program's shell. Null when the
    /// system grants no monitor.
    virtual EventMonitorRef addGlobalMonitor(std::uint64_t mask, Handler handler,
                                             std::string_view owner) = 0;

    /// Called on the main thread when the system takes the monitor away for good (it is not called
    /// when the owner lets go of it). The handler may release the monitor.
    virtual void setInvalidationHandler(EventMonitor& monitor, std::function<void()> handler) = 0;

    /// A hint: with false the owner would ignore whatever it is told, so a system that is woken up
    /// by every event may leave it alone. Others ignore it. At first true.
    virtual void setArmed(EventMonitor& monitor, bool armed) = 0;
};

} // namespace quillon
