#include "Platform/MacOS/MacEvent.h"

namespace quillon {

namespace {
CGEventField numbered(EventField field) { return static_cast<CGEventField>(field); }
} // namespace

std::int64_t MacEvent::integerValueField(EventField field) const {
    return CGEventGetIntegerValueField(event_, numbered(field));
}

double MacEvent::doubleValueField(EventField field) const {
    return CGEventGetDoubleValueField(event_, numbered(field));
}

void MacEvent::setDoubleValueField(EventField field, double value) {
    CGEventSetDoubleValueField(event_, numbered(field), value);
}

Point MacEvent::location() const {
    const CGPoint location = CGEventGetLocation(event_);
    return {location.x, location.y};
}

} // namespace quillon
