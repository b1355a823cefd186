#include "Platform/MacOS/SystemDefinedEvents.h"

#import <AppKit/AppKit.h>

namespace quillon {

CGEventRef makeSystemDefinedEvent(const SystemDefinedEvent& event) {
    @autoreleasepool {
        NSEvent* made = [NSEvent otherEventWithType:NSEventTypeSystemDefined
                                           location:NSMakePoint(event.location.x, event.location.y)
                                      modifierFlags:event.modifierFlags
                                          timestamp:event.timestamp
                                       windowNumber:event.windowNumber
                                            context:nil
                                            subtype:event.subtype
                                              data1:event.data1
                                              data2:event.data2];
        CGEventRef native = [made CGEvent];
        if (native != nullptr) {
            CFRetain(native); // it belongs to the other, which goes
        }
        return native;
    }
}

} // namespace quillon
