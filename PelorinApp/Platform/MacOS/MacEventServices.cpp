#include "Platform/MacOS/MacEventServices.h"

#include "Platform/MacOS/MacEvent.h"
#include "Platform/MacOS/MacEventTap.h"
#include "Platform/MacOS/OwnEventMark.h"
#include "Platform/MacOS/SystemDefinedEvents.h"

#include <utility>

namespace quillon {

namespace {

class MacRunLoopSource final : public RunLoopSource {
  public:
    explicit MacRunLoopSource(CfOwned<CFRunLoopSourceRef> source) : source_(std::move(source)) {}

    // The common modes, so that events flow also while a menu or a slider is held.
    void attach() override {
        CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    }
    void detach() override {
        CFRunLoopRemoveSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    }

  private:
    CfOwned<CFRunLoopSourceRef> source_;
};

EventRef ownEvent(CfOwned<CGEventRef> event) {
    if (!event) {
        return nullptr;
    }
    CGEventSetIntegerValueField(event.get(), kCGEventSourceUserData, ownEventMark);
    return std::make_unique<MacEvent>(std::move(event));
}

CGEventTapLocation native(TapLocation location) {
    return static_cast<CGEventTapLocation>(location);
}

} // namespace

EventTapRef MacEventServices::createTap(TapLocation location, TapPlacement placement,
                                        TapOptions options, std::uint64_t eventsOfInterest,
                                        EventTapCallback callback, void* userInfo,
                                        std::string_view /*owner*/) {
    return MacEventTap::create(
        runLoop_, native(location), static_cast<CGEventTapPlacement>(placement),
        static_cast<CGEventTapOptions>(options), eventsOfInterest, callback, userInfo);
}

RunLoopSourceRef MacEventServices::createRunLoopSource(const EventTapRef& tap) {
    CfOwned source(CFMachPortCreateRunLoopSource(kCFAllocatorDefault,
                                                 static_cast<const MacEventTap&>(*tap).port(), 0));
    return source ? std::make_shared<MacRunLoopSource>(std::move(source)) : nullptr;
}

void MacEventServices::enableTap(EventTap& tap, bool enable) {
    static_cast<MacEventTap&>(tap).enable(enable);
}

void MacEventServices::setInvalidationHandler(EventTap& tap, std::function<void()> handler) {
    static_cast<MacEventTap&>(tap).setInvalidationHandler(std::move(handler));
}

EventRef MacEventServices::createEvent() { return ownEvent(CfOwned(CGEventCreate(nullptr))); }

EventRef MacEventServices::createMouseEvent(EventType type, Point position, MouseButton button) {
    return ownEvent(CfOwned(CGEventCreateMouseEvent(nullptr, static_cast<CGEventType>(type),
                                                    CGPointMake(position.x, position.y),
                                                    static_cast<CGMouseButton>(button))));
}

EventRef MacEventServices::createSystemDefinedEvent(const SystemDefinedEvent& event) {
    return ownEvent(CfOwned(makeSystemDefinedEvent(event)));
}

void MacEventServices::post(TapLocation location, const Event& event) {
    CGEventPost(native(location), static_cast<const MacEvent&>(event).get());
}

} // namespace quillon
