#include "Platform/Simulated/SimulatedEventMonitors.h"

#include <algorithm>
#include <string>
#include <utility>

namespace quillon {

namespace {

/// The deltas of both axes in the finest unit that the event has.
void readDeltas(const FieldEvent& event, MonitoredEvent& told) {
    using enum EventField;
    static constexpr std::pair<EventField, EventField> units[]{
        {scrollPointDeltaAxis1, scrollPointDeltaAxis2},
        {scrollFixedPointDeltaAxis1, scrollFixedPointDeltaAxis2},
        {scrollLineDeltaAxis1, scrollLineDeltaAxis2},
    };
    told.deltaY = event.doubleValueField(scrollLineDeltaAxis1);
    told.deltaX = event.doubleValueField(scrollLineDeltaAxis2);
    for (const auto& [vertical, horizontal] : units) {
        told.scrollingDeltaY = event.doubleValueField(vertical);
        told.scrollingDeltaX = event.doubleValueField(horizontal);
        if (told.scrollingDeltaY != 0 || told.scrollingDeltaX != 0) {
            return;
        }
    }
}

} // namespace

class SimulatedEventMonitors::Monitor final : public EventMonitor {
  public:
    Monitor(std::uint64_t wanted, Handler listener, std::string_view tool, ActionSink& sink)
        : mask(wanted), handler(std::move(listener)), owner(tool), sink_(sink) {}
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;
    ~Monitor() override {
        if (!owner.empty() && !dropped) {
            sink_("tap", "remove " + owner);
        }
    }

    std::uint64_t mask;
    Handler handler;
    std::string owner;
    bool armed = true;
    bool dropped = false;
    std::function<void()> invalidated;

  private:
    ActionSink& sink_;
};

EventMonitorRef SimulatedEventMonitors::addGlobalMonitor(std::uint64_t mask, Handler handler,
                                                         std::string_view owner) {
    if (!granting) {
        return nullptr;
    }
    auto monitor = std::make_shared<Monitor>(mask, std::move(handler), owner, sink_);
    std::erase_if(monitors_, [](const auto& old) { return old.expired(); });
    monitors_.push_back(monitor);
    if (!owner.empty()) {
        sink_("tap", "install " + monitor->owner);
    }
    return monitor;
}

void SimulatedEventMonitors::setInvalidationHandler(EventMonitor& monitor,
                                                    std::function<void()> handler) {
    static_cast<Monitor&>(monitor).invalidated = std::move(handler);
}

void SimulatedEventMonitors::setArmed(EventMonitor& monitor, bool armed) {
    static_cast<Monitor&>(monitor).armed = armed;
}

void SimulatedEventMonitors::deliver(EventType type, const FieldEvent& event) {
    MonitoredEvent told{.type = type, .buttonNumber = event.button()};
    readDeltas(event, told);
    for (const auto& monitor : living()) {
        if ((monitor->mask & eventMask(type)) != 0) {
            monitor->handler(told);
        }
    }
}

void SimulatedEventMonitors::drop(std::string_view owner) {
    for (const auto& monitor : living()) {
        if (monitor->owner == owner) {
            monitor->dropped = true;
            if (monitor->invalidated) {
                std::exchange(monitor->invalidated, nullptr)();
            }
        }
    }
}

std::size_t SimulatedEventMonitors::count() const { return living().size(); }

bool SimulatedEventMonitors::hasMonitor(std::string_view owner) const {
    const auto monitors = living();
    return std::any_of(monitors.begin(), monitors.end(),
                       [&](const auto& monitor) { return monitor->owner == owner; });
}

std::uint64_t SimulatedEventMonitors::mask(std::string_view owner) const {
    std::uint64_t mask = 0;
    for (const auto& monitor : living()) {
        mask |= monitor->owner == owner ? monitor->mask : 0;
    }
    return mask;
}

bool SimulatedEventMonitors::isArmed(std::string_view owner) const {
    const auto monitors = living();
    return std::any_of(monitors.begin(), monitors.end(), [&](const auto& monitor) {
        return monitor->owner == owner && monitor->armed;
    });
}

std::vector<std::shared_ptr<SimulatedEventMonitors::Monitor>>
SimulatedEventMonitors::living() const {
    std::vector<std::shared_ptr<Monitor>> found;
    for (const auto& one : monitors_) {
        if (auto monitor = one.lock(); monitor && !monitor->dropped) {
            found.push_back(std::move(monitor));
        }
    }
    return found;
}

} // namespace quillon
