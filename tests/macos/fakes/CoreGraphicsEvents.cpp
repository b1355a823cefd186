#include "CoreFoundationObjects.h"
#include "FakeCoreFoundation.h"
#include "FakeEvents.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace quillon::fakes;

struct __CGEvent final : FakeObject {
    explicit __CGEvent(EventRecord content) : FakeObject(eventType), record(std::move(content)) {}
    EventRecord record;
};

namespace quillon::fakes {

namespace {

CGEventType mouseType(CGMouseButton button, bool isDown) {
    switch (button) {
    case kCGMouseButtonLeft:
        return isDown ? kCGEventLeftMouseDown : kCGEventLeftMouseUp;
    case kCGMouseButtonRight:
        return isDown ? kCGEventRightMouseDown : kCGEventRightMouseUp;
    case kCGMouseButtonCenter:
        break;
    }
    return isDown ? kCGEventOtherMouseDown : kCGEventOtherMouseUp;
}

/// Lines bring the finer deltas of their axis with them, at ten points a line.
void setField(EventRecord& record, CGEventField field, double value) {
    record.fields[field] = value;
    constexpr double pointsPerLine = 10;
    if (field == kCGScrollWheelEventDeltaAxis1) {
        record.fields[kCGScrollWheelEventFixedPtDeltaAxis1] = value;
        record.fields[kCGScrollWheelEventPointDeltaAxis1] = value * pointsPerLine;
    } else if (field == kCGScrollWheelEventDeltaAxis2) {
        record.fields[kCGScrollWheelEventFixedPtDeltaAxis2] = value;
        record.fields[kCGScrollWheelEventPointDeltaAxis2] = value * pointsPerLine;
    }
}

} // namespace

EventRecord recordOf(CGEventRef event) { return event->record; }

FakeEvents& fakeEvents() {
    static FakeEvents fake;
    return fake;
}

const FakeEvents::Tap* FakeEvents::find(CFMachPortRef port) const {
    const auto found = std::ranges::find(taps_, port, &Tap::port);
    return found == taps_.end() ? nullptr : &*found;
}

std::vector<CFMachPortRef> FakeEvents::taps() const {
    std::vector<CFMachPortRef> ports;
    std::ranges::transform(taps_, std::back_inserter(ports), &Tap::port);
    return ports;
}

bool FakeEvents::isEnabled(CFMachPortRef tap) const {
    const Tap* found = find(tap);
    return found != nullptr && found->isEnabled;
}

bool FakeEvents::isListening(CFMachPortRef tap) const {
    const auto modes = FakeCoreFoundation::modesOf(tap);
    return isEnabled(tap) && std::ranges::find(modes, "kCFRunLoopCommonModes") != modes.end();
}

bool FakeEvents::passTaps(CGEventRef event) {
    for (const CFMachPortRef port : taps()) {
        // Each may be gone, or off, by what an earlier one does.
        if (!isListening(port)) {
            continue;
        }
        const TapRequest request = find(port)->request;
        const CGEventType type = event->record.type;
        if (type >= 64 || (request.eventsOfInterest & (CGEventMask{1} << type)) == 0) {
            continue;
        }
        CFRetain(port);
        if (request.options == kCGEventTapOptionListenOnly) {
            auto* copy = new __CGEvent(event->record);
            request.callback(nullptr, type, copy, request.userInfo);
            CFRelease(copy);
        } else {
            CGEventRef answer = request.callback(nullptr, type, event, request.userInfo);
            if (answer != nullptr && answer != event) {
                event->record = answer->record;
            }
            if (answer == nullptr) {
                CFRelease(port);
                return false;
            }
        }
        CFRelease(port);
    }
    arrived.push_back(event->record);
    if (onArrival) {
        onArrival(event);
    }
    return true;
}

bool FakeEvents::send(CGEventRef event) {
    const bool isFirst = !std::exchange(isSending_, true);
    const bool came = passTaps(event);
    while (isFirst && !waiting_.empty()) {
        CGEventRef next = waiting_.front();
        waiting_.erase(waiting_.begin());
        passTaps(next);
        CFRelease(next);
    }
    if (isFirst) {
        isSending_ = false;
    }
    return came;
}

bool FakeEvents::sendMade(CGEventType type, const Fields& fields) {
    EventRecord record{type, pointer, {}};
    for (const auto& [field, value] : fields) {
        record.fields[field] = value;
    }
    auto* event = new __CGEvent(std::move(record));
    const bool came = send(event);
    CFRelease(event);
    return came;
}

bool FakeEvents::scroll(const Fields& fields) { return sendMade(kCGEventScrollWheel, fields); }

bool FakeEvents::press(CGMouseButton button) {
    return sendMade(mouseType(button, true), {{kCGMouseEventButtonNumber, button}});
}

bool FakeEvents::release(CGMouseButton button) {
    return sendMade(mouseType(button, false), {{kCGMouseEventButtonNumber, button}});
}

void FakeEvents::disableTaps(CGEventType reason) {
    for (const CFMachPortRef port : taps()) {
        if (!isEnabled(port)) {
            continue;
        }
        const bool isTold = isListening(port);
        const TapRequest request = find(port)->request;
        std::ranges::find(taps_, port, &Tap::port)->isEnabled = false;
        if (isTold) {
            CFRetain(port);
            request.callback(nullptr, reason, nullptr, request.userInfo);
            CFRelease(port);
        }
    }
}

void FakeEvents::invalidateTaps() {
    for (const CFMachPortRef port : taps()) {
        if (find(port) != nullptr) {
            CFMachPortInvalidate(port);
        }
    }
}

void FakeEvents::reset() {
    tapRequests.clear();
    mouseEventRequests.clear();
    posts.clear();
    arrived.clear();
    grantsTaps = true;
    makesEvents = true;
    pointer = {};
    onArrival = nullptr;
}

CFMachPortRef FakeEvents::createTap(const TapRequest& request) {
    tapRequests.push_back(request);
    if (!grantsTaps) {
        return nullptr;
    }
    auto* port = new __CFMachPort;
    port->ended = [this, port] {
        std::erase_if(taps_, [port](const Tap& tap) { return tap.port == port; });
    };
    const bool isFirst = request.placement == kCGHeadInsertEventTap;
    taps_.insert(isFirst ? taps_.begin() : taps_.end(), Tap{port, request, true});
    return port;
}

void FakeEvents::enableTap(CFMachPortRef tap, bool enable) {
    fakeCoreFoundation().calls.emplace_back(enable ? "CGEventTapEnable(true)"
                                                   : "CGEventTapEnable(false)");
    const auto found = std::ranges::find(taps_, tap, &Tap::port);
    if (found != taps_.end()) {
        found->isEnabled = enable;
    }
}

void FakeEvents::post(CGEventTapLocation location, CGEventRef event) {
    posts.push_back({location, event->record});
    auto* copy = new __CGEvent(event->record);
    if (isSending_) {
        waiting_.push_back(copy);
        return;
    }
    send(copy);
    CFRelease(copy);
}

} // namespace quillon::fakes

extern "C" {

CFTypeID CGEventGetTypeID() { return eventType; }

CGEventRef CGEventCreate(CGEventSourceRef /*source*/) {
    return fakeEvents().makesEvents
               ? new __CGEvent(EventRecord{kCGEventNull, fakeEvents().pointer, {}})
               : nullptr;
}

CGEventRef CGEventCreateMouseEvent(CGEventSourceRef source, CGEventType type, CGPoint position,
                                   CGMouseButton button) {
    fakeEvents().mouseEventRequests.push_back({source != nullptr, type, position, button});
    if (!fakeEvents().makesEvents) {
        return nullptr;
    }
    const double number = button;
    return new __CGEvent(EventRecord{type, position, {{kCGMouseEventButtonNumber, number}}});
}

CGEventType CGEventGetType(CGEventRef event) { return event->record.type; }
void CGEventSetType(CGEventRef event, CGEventType type) { event->record.type = type; }
CGPoint CGEventGetLocation(CGEventRef event) { return event->record.location; }

std::int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field) {
    return static_cast<std::int64_t>(event->record.field(field));
}

void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, std::int64_t value) {
    setField(event->record, field, static_cast<double>(value));
}

double CGEventGetDoubleValueField(CGEventRef event, CGEventField field) {
    return event->record.field(field);
}

void CGEventSetDoubleValueField(CGEventRef event, CGEventField field, double value) {
    setField(event->record, field, value);
}

CFMachPortRef CGEventTapCreate(CGEventTapLocation location, CGEventTapPlacement placement,
                               CGEventTapOptions options, CGEventMask eventsOfInterest,
                               CGEventTapCallBack callback, void* userInfo) {
    return fakeEvents().createTap(
        {location, placement, options, eventsOfInterest, callback, userInfo});
}

void CGEventTapEnable(CFMachPortRef tap, bool enable) { fakeEvents().enableTap(tap, enable); }
bool CGEventTapIsEnabled(CFMachPortRef tap) { return fakeEvents().isEnabled(tap); }

void CGEventPost(CGEventTapLocation location, CGEventRef event) {
    fakeEvents().post(location, event);
}

} // extern "C"
