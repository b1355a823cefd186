#include "Platform/MacOS/MacEventMonitors.h"

#include "Platform/MacOS/OwnEventMark.h"
#include "Platform/MacOS/SharedHandler.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

namespace quillon {

namespace {

class MacEventMonitor final : public EventMonitor {
  public:
    explicit MacEventMonitor(id token) : token_(token) {}
    MacEventMonitor(const MacEventMonitor&) = delete;
    MacEventMonitor& operator=(const MacEventMonitor&) = delete;
    ~MacEventMonitor() override { [NSEvent removeMonitor:token_]; }

  private:
    id token_;
};

bool isOwn(NSEvent* event) {
    CGEventRef native = [event CGEvent];
    return native != nullptr &&
           CGEventGetIntegerValueField(native, kCGEventSourceUserData) == ownEventMark;
}

/// Only a scroll has deltas, and only a button a number: to ask others for them is an error.
MonitoredEvent monitoredEvent(NSEvent* event) {
    MonitoredEvent monitored;
    monitored.type = static_cast<EventType>([event type]);
    if (monitored.type == EventType::scrollWheel) {
        monitored.scrollingDeltaX = [event scrollingDeltaX];
        monitored.scrollingDeltaY = [event scrollingDeltaY];
        monitored.deltaX = [event deltaX];
        monitored.deltaY = [event deltaY];
    } else {
        monitored.buttonNumber = static_cast<MouseButton>([event buttonNumber]);
    }
    return monitored;
}

} // namespace

EventMonitorRef MacEventMonitors::addGlobalMonitor(std::uint64_t mask, Handler handler,
                                                   std::string_view /*owner*/) {
    const SharedHandler<const MonitoredEvent&> received(
        std::move(handler)); // may remove its monitor
    id token = [NSEvent addGlobalMonitorForEventsMatchingMask:mask
                                                      handler:^(NSEvent* event) {
                                                        if (isOwn(event)) {
                                                            return;
                                                        }
                                                        received(monitoredEvent(event));
                                                      }];
    return token == nil ? nullptr : std::make_shared<MacEventMonitor>(token);
}

void MacEventMonitors::setInvalidationHandler(EventMonitor& /*monitor*/,
                                              std::function<void()> /*handler*/) {}

void MacEventMonitors::setArmed(EventMonitor& /*monitor*/, bool /*armed*/) {}

} // namespace quillon
