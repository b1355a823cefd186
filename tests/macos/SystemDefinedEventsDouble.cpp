#include "Platform/MacOS/SystemDefinedEvents.h"

// For test programs without the window toolkit, which alone can make the real ones.

namespace quillon {

CGEventRef makeSystemDefinedEvent(const SystemDefinedEvent& event) {
    CGEventRef made = CGEventCreate(nullptr);
    if (made != nullptr) {
        CGEventSetType(made, static_cast<CGEventType>(EventType::systemDefined));
        CGEventSetIntegerValueField(made, static_cast<CGEventField>(0xFFFF), event.data1);
    }
    return made;
}

} // namespace quillon
