#pragma once

#include "Platform/Platform.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace quillon {

/// Calls a function of the owner, which its maker holds by a shared pointer, as long as there is
/// one.
template <class Owner>
EventMonitors::Handler handlerFor(Owner* owner, void (Owner::*handle)(const MonitoredEvent&)) {
    return [owner, weak = owner->weak_from_this(), handle](const MonitoredEvent& event) {
        if (const auto alive = weak.lock()) {
            (owner->*handle)(event);
        }
    };
}

/// A listen-only monitor, installed or absent.
class InputMonitor {
  public:
    explicit InputMonitor(EventMonitors& monitors) : monitors_(monitors) {}
    InputMonitor(const InputMonitor&) = delete;
    InputMonitor& operator=(const InputMonitor&) = delete;

    /// True when the monitor is there afterwards. Does nothing when there is one already.
    bool install(std::uint64_t mask, EventMonitors::Handler handler, std::string_view toolId) {
        if (!exists()) {
            eventMonitor_ = monitors_.addGlobalMonitor(mask, std::move(handler), toolId);
        }
        if (exists()) {
            // One that the system has taken away counts as absent, so that the health timer brings
            // it back.
            monitors_.setInvalidationHandler(*eventMonitor_, [this] { remove(); });
        }
        return exists();
    }
    void remove() { eventMonitor_.reset(); }

    /// Whether anything would come of an event that is told.
    void setArmed(bool armed) {
        if (exists()) {
            monitors_.setArmed(*eventMonitor_, armed);
        }
    }

    [[nodiscard]] bool exists() const { return eventMonitor_ != nullptr; }

  private:
    EventMonitors& monitors_;
    EventMonitorRef eventMonitor_;
};

} // namespace quillon
