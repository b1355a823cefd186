#include "FakeNativeEvents.h"

#include "Foundation.h"

#include <AppKit/AppKit.h>
#include <Block.h>

using quillon::fakes::FakeNativeEvents;
using quillon::fakes::fakeNativeEvents;
using quillon::fakes::stateOf;

namespace {

struct EventState {
    FakeNativeEvents::Happening happening;
    FakeNativeEvents::OtherEventRequest request{};
    CGEventRef lowLevelForm = nullptr;
};

struct MonitorState {
    NSEventMask mask = 0;
    void (^handler)(NSEvent*) = nullptr;
};

CGEventRef lowLevelForm(unsigned long type, std::int64_t sourceUserData) {
    CGEventRef event = CGEventCreate(nullptr);
    CGEventSetType(event, static_cast<CGEventType>(type));
    CGEventSetIntegerValueField(event, kCGEventSourceUserData, sourceUserData);
    return event;
}

bool isScroll(NSEvent* event) { return [event type] == NSEventTypeScrollWheel; }

void ask(bool isAllowed) { fakeNativeEvents().forbiddenQuestions += isAllowed ? 0 : 1; }

} // namespace

@implementation NSEvent

+ (NSPoint)mouseLocation {
    return fakeNativeEvents().mouseLocation;
}

+ (NSEvent*)otherEventWithType:(NSEventType)type
                      location:(NSPoint)location
                 modifierFlags:(NSEventModifierFlags)flags
                     timestamp:(NSTimeInterval)time
                  windowNumber:(NSInteger)windowNumber
                       context:(NSGraphicsContext*)context
                       subtype:(short)subtype
                         data1:(NSInteger)data1
                         data2:(NSInteger)data2 {
    const FakeNativeEvents::OtherEventRequest request{
        type, location, flags, time, windowNumber, context != nil, subtype, data1, data2};
    fakeNativeEvents().otherEventRequests.push_back(request);
    if (!fakeNativeEvents().makesEvents)
        return nil;
    NSEvent* event = [[NSEvent alloc] init];
    auto& state = stateOf<EventState>(event);
    state.happening.type = type;
    state.request = request;
    if (fakeNativeEvents().makesLowLevelForms)
        state.lowLevelForm = lowLevelForm(type, 0);
    return event;
}

+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent*))block {
    fakeNativeEvents().monitorRequests.push_back(mask);
    if (!fakeNativeEvents().grantsMonitors)
        return nil;
    NSObject* monitor = [[NSObject alloc] init];
    stateOf<MonitorState>(monitor) = {mask, (void (^)(NSEvent*))_Block_copy((void*)block)};
    fakeNativeEvents().addMonitor((void*)monitor);
    return monitor;
}

// As the system, it lets go of the block.
+ (void)removeMonitor:(id)monitor {
    fakeNativeEvents().removeMonitor((void*)monitor);
    _Block_release((void*)stateOf<MonitorState>(monitor).handler);
}

- (NSEventType)type {
    return (NSEventType)stateOf<EventState>(self).happening.type;
}
- (CGEventRef)CGEvent {
    return stateOf<EventState>(self).lowLevelForm;
}
- (NSInteger)buttonNumber {
    ask(!isScroll(self));
    return stateOf<EventState>(self).happening.buttonNumber;
}
- (CGFloat)deltaX {
    return stateOf<EventState>(self).happening.deltaX;
}
- (CGFloat)deltaY {
    return stateOf<EventState>(self).happening.deltaY;
}
- (CGFloat)scrollingDeltaX {
    ask(isScroll(self));
    return stateOf<EventState>(self).happening.scrollingDeltaX;
}
- (CGFloat)scrollingDeltaY {
    ask(isScroll(self));
    return stateOf<EventState>(self).happening.scrollingDeltaY;
}
- (short)subtype {
    return stateOf<EventState>(self).request.subtype;
}
- (NSInteger)data1 {
    return stateOf<EventState>(self).request.data1;
}
- (NSInteger)data2 {
    return stateOf<EventState>(self).request.data2;
}

@end

namespace quillon::fakes {

void FakeNativeEvents::happen(const Happening& happening) {
    NSEvent* event = [[NSEvent alloc] init];
    auto& state = stateOf<EventState>(event);
    state.happening = happening;
    if (happening.hasLowLevelForm)
        state.lowLevelForm = lowLevelForm(happening.type, happening.sourceUserData);
    for (void* monitor : std::vector<void*>(monitors_)) {
        const auto& [mask, handler] = stateOf<MonitorState>((id)monitor);
        if ((mask >> happening.type & 1) != 0)
            handler(event);
    }
}

void FakeNativeEvents::reset() { *this = {}; }

FakeNativeEvents& fakeNativeEvents() {
    static FakeNativeEvents events;
    return events;
}

} // namespace quillon::fakes
