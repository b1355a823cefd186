#include "Platform/FieldEvent.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillon {

namespace {
std::size_t indexOf(EventField field) {
    const auto* found = std::find(FieldEvent::fields.begin(), FieldEvent::fields.end(), field);
    return static_cast<std::size_t>(found - FieldEvent::fields.begin());
}
} // namespace

std::int64_t FieldEvent::integerValueField(EventField field) const {
    const double value = doubleValueField(field);
    return std::fabs(value) < 0x1p63 ? static_cast<std::int64_t>(value) : 0;
}

double FieldEvent::doubleValueField(EventField field) const {
    const std::size_t index = indexOf(field);
    return index < values_.size() ? values_[index] : 0.0;
}

void FieldEvent::setDoubleValueField(EventField field, double value) {
    const std::size_t index = indexOf(field);
    if (index < values_.size()) {
        values_[index] = value;
    }
}

} // namespace quillon
