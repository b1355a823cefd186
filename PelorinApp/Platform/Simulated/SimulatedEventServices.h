#pragma once

#include "Platform/Displays.h"
#include "Platform/EventServices.h"
#include "Platform/FieldEvent.h"
#include "Platform/Simulated/ActionSink.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace quillon {

/// Taps on input that a test or trace makes up.
class SimulatedEventServices final : public EventServices {
  public:
    SimulatedEventServices(const Displays& displays, ActionSink sink)
        : displays_(displays), sink_(std::move(sink)) {}

    EventTapRef createTap(TapLocation location, TapPlacement placement, TapOptions options,
                          std::uint64_t eventsOfInterest, EventTapCallback callback, void* userInfo,
                          std::string_view owner) override;
    RunLoopSourceRef createRunLoopSource(const EventTapRef& tap) override;
    void enableTap(EventTap& tap, bool enable) override;
    void setInvalidationHandler(EventTap& tap, std::function<void()> handler) override;
    void setArmedAt(EventTap& tap, ArmedAt armedAt) override;
    void setConstantRewrite(EventTap& tap, ConstantRewrite rewrite) override;
    EventRef createEvent() override;
    EventRef createMouseEvent(EventType type, Point position, MouseButton button) override;
    EventRef createSystemDefinedEvent(const SystemDefinedEvent& event) override;
    void post(TapLocation location, const Event& event) override;
    void setPanicHandler(std::function<void()> handler) override;

    enum class Fate { pass, rewrite, consume };

    /// Sends an event of the user through the taps and says what became of it.
    Fate deliver(EventType type, FieldEvent& event);

    /// The system switches every tap off, then tells each one.
    void disableAll(EventType reason);

    /// The user demands all input back.
    void panic() const;

    /// Whether the system grants new taps.
    void setGranting(bool granting) { granting_ = granting; }

    /// What the system refuses to make from now on.
    void setMaking(bool emptyEvents, bool mouseEvents) {
        makesEmptyEvents_ = emptyEvents;
        makesMouseEvents_ = mouseEvents;
    }

    void setMakingSystemDefined(bool makes) { makesSystemDefinedEvents_ = makes; }

    /// The tool's tap vanishes, as after a system fault.
    void drop(std::string_view owner);

    /// Whether some tap of `owner` is there, and whether one would be called for an event.
    [[nodiscard]] bool hasTap(std::string_view owner) const;
    [[nodiscard]] bool isListening(std::string_view owner) const;

    /// The events that the taps of `owner` ask for, as a mask.
    [[nodiscard]] std::uint64_t eventsOfInterest(std::string_view owner) const;

    /// What the enabled taps of `owner` say that they do to every event.
    [[nodiscard]] ConstantRewrite constantRewrite(std::string_view owner) const;

    /// Whether some enabled tap says that it could consume at this place.
    [[nodiscard]] bool isArmedAt(Point pointer, std::span<const Rect> screens) const;

    /// The types of all presses and releases of buttons that were posted, in order.
    [[nodiscard]] const std::vector<EventType>& postedButtons() const { return postedButtons_; }

  private:
    class SimulatedTap;
    class SimulatedSource;
    [[nodiscard]] std::vector<std::shared_ptr<SimulatedTap>> living() const;
    void postKey(const SystemDefinedEvent& event);

    const Displays& displays_;
    ActionSink sink_;
    bool granting_ = true;
    bool makesEmptyEvents_ = true;
    bool makesMouseEvents_ = true;
    bool makesSystemDefinedEvents_ = true;
    std::optional<SystemDefinedEvent> keyDown_; // posted, and its release not yet
    std::vector<EventType> postedButtons_;
    std::function<void()> panicHandler_;
    std::vector<std::weak_ptr<SimulatedTap>> taps_; // newest first
};

} // namespace quillon
