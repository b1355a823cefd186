#pragma once

#include "Platform/Event.h"
#include "Platform/MacOS/CoreFoundationTypes.h"

#include <CoreGraphics/CoreGraphics.h>

namespace quillon {

/// An event of the system, whose fields have the numbers that we use.
class MacEvent final : public Event {
  public:
    /// One that is on its way: somebody else keeps it for as long as this lives. Nothing is
    /// allocated, since every scroll of the user's comes through here.
    explicit MacEvent(CGEventRef borrowed) : event_(borrowed) {}

    /// One that was made here.
    explicit MacEvent(CfOwned<CGEventRef> owned) : owned_(std::move(owned)), event_(owned_.get()) {}

    [[nodiscard]] std::int64_t integerValueField(EventField field) const override;
    [[nodiscard]] double doubleValueField(EventField field) const override;
    void setDoubleValueField(EventField field, double value) override;
    [[nodiscard]] Point location() const override;

    [[nodiscard]] CGEventRef get() const { return event_; }

  private:
    CfOwned<CGEventRef> owned_;
    CGEventRef event_;
};

} // namespace quillon
