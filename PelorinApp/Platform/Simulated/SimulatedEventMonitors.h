#pragma once

#include "Platform/EventMonitors.h"
#include "Platform/FieldEvent.h"
#include "Platform/Simulated/ActionSink.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace quillon {

/// Listeners to what the user does in other programs, as a test or trace makes it up. Those of
/// tools are reported as they come and go.
class SimulatedEventMonitors final : public EventMonitors {
  public:
    explicit SimulatedEventMonitors(ActionSink sink) : sink_(std::move(sink)) {}

    EventMonitorRef addGlobalMonitor(std::uint64_t mask, Handler handler,
                                     std::string_view owner) override;
    void setInvalidationHandler(EventMonitor& monitor, std::function<void()> handler) override;
    void setArmed(EventMonitor& monitor, bool armed) override;

    /// The user does this in some other program, and no tap consumed it.
    void deliver(EventType type, const FieldEvent& event = {});

    /// The tool's monitor vanishes, as after a system fault.
    void drop(std::string_view owner);

    [[nodiscard]] std::size_t count() const;
    [[nodiscard]] bool hasMonitor(std::string_view owner) const;
    /// The events that the monitors of `owner` ask for, as a mask.
    [[nodiscard]] std::uint64_t mask(std::string_view owner) const;
    [[nodiscard]] bool isArmed(std::string_view owner) const;

    bool granting = true;

  private:
    class Monitor;
    [[nodiscard]] std::vector<std::shared_ptr<Monitor>> living() const;
    ActionSink sink_;
    std::vector<std::weak_ptr<Monitor>> monitors_;
};

} // namespace quillon
