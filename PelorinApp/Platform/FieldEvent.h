#pragma once

#include "Platform/EventServices.h"

#include <array>
#include <optional>

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

    /// A scroll, or whatever its fields make of it.
    FieldEvent() = default;
    FieldEvent(EventType type, Point location, MouseButton button)
        : type_(type), location_(location), button_(button) {}
    explicit FieldEvent(const SystemDefinedEvent& event)
        : type_(EventType::systemDefined), location_(event.location), systemDefined_(event) {}

    [[nodiscard]] std::int64_t integerValueField(EventField field) const override;
    [[nodiscard]] double doubleValueField(EventField field) const override;
    void setDoubleValueField(EventField field, double value) override;

    [[nodiscard]] Point location() const override { return location_; }

    [[nodiscard]] EventType type() const { return type_; }
    [[nodiscard]] MouseButton button() const { return button_; }

    /// Of a system-defined event.
    [[nodiscard]] const std::optional<SystemDefinedEvent>& systemDefined() const {
        return systemDefined_;
    }

    /// Whether the fields are the same.
    bool operator==(const FieldEvent& other) const { return values_ == other.values_; }

  private:
    std::array<double, fields.size()> values_{};
    EventType type_ = EventType::scrollWheel;
    Point location_;
    MouseButton button_ = MouseButton::left;
    std::optional<SystemDefinedEvent> systemDefined_;
};

} // namespace quillon
