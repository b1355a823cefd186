#pragma once

#include "Platform/Event.h"

#include <array>

namespace quillon {

/// The event of platforms that have no native numbered fields: a small table, no allocation.
class FieldEvent final : public Event {
  public:
    static constexpr std::array fields{
        EventField::scrollLineDeltaAxis1,       EventField::scrollLineDeltaAxis2,
        EventField::scrollIsContinuous,         EventField::scrollFixedPointDeltaAxis1,
        EventField::scrollFixedPointDeltaAxis2, EventField::scrollPointDeltaAxis1,
        EventField::scrollPointDeltaAxis2,      EventField::scrollPhase,
        EventField::scrollMomentumPhase,
    };

    [[nodiscard]] std::int64_t integerValueField(EventField field) const override;
    [[nodiscard]] double doubleValueField(EventField field) const override;
    void setDoubleValueField(EventField field, double value) override;

    bool operator==(const FieldEvent& other) const { return values_ == other.values_; }

  private:
    std::array<double, fields.size()> values_{};
};

} // namespace quillon
