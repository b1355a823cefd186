#pragma once

#include "Platform/EventServices.h"
#include "Platform/RunLoop.h"

namespace quillon {

/// The system's own event taps and events.
class MacEventServices final : public EventServices {
  public:
    /// `runLoop` brings to the main thread what the system says on others.
    explicit MacEventServices(RunLoop& runLoop) : runLoop_(runLoop) {}

    EventTapRef createTap(TapLocation location, TapPlacement placement, TapOptions options,
                          std::uint64_t eventsOfInterest, EventTapCallback callback, void* userInfo,
                          std::string_view owner) override;
    RunLoopSourceRef createRunLoopSource(const EventTapRef& tap) override;
    void enableTap(EventTap& tap, bool enable) override;
    void setInvalidationHandler(EventTap& tap, std::function<void()> handler) override;

    // The system asks taps about every event, so nothing is held and no device is changed.
    void setArmedAt(EventTap& /*tap*/, ArmedAt /*armedAt*/) override {}
    void setConstantRewrite(EventTap& /*tap*/, ConstantRewrite /*rewrite*/) override {}
    void setPanicHandler(std::function<void()> /*handler*/) override {}

    EventRef createEvent() override;
    EventRef createMouseEvent(EventType type, Point position, MouseButton button) override;
    EventRef createSystemDefinedEvent(const SystemDefinedEvent& event) override;
    void post(TapLocation location, const Event& event) override;

  private:
    RunLoop& runLoop_;
};

} // namespace quillon
