#pragma once

#include "Platform/Event.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace quillon {

/// An opaque token. Letting go of the last reference removes the monitor.
class EventMonitor {
  public:
    virtual ~EventMonitor() = default;
};
using EventMonitorRef = std::shared_ptr<EventMonitor>;

/// Listeners to input that goes to other programs. Main thread only.
///
/// They get copies after the taps are through with an event: nothing that was consumed, nothing
/// that this program posted, nothing that goes to its own windows.
class EventMonitors {
  public:
    virtual ~EventMonitors() = default;

    /// `mask` holds eventMask bits. The handler is called on the main thread. Null when the system
    /// grants no monitor.
    virtual EventMonitorRef addGlobalMonitor(std::uint64_t mask,
                                             std::function<void(EventType)> handler) = 0;
};

} // namespace quillon
