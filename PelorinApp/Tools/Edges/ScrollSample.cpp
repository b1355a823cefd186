#include "Tools/Edges/ScrollSample.h"

#include "Platform/Event.h"

namespace quillon {

namespace {
/// The value that says "ended" in the scroll phase. The momentum phase is compared with the same
/// value on purpose, although current systems never send it there.
constexpr std::int64_t phaseEnded = 8;
} // namespace

ScrollSample classifyScroll(const Event& event) {
    using enum EventField;
    const double fixed1 = event.doubleValueField(scrollFixedPointDeltaAxis1);
    const double fixed2 = event.doubleValueField(scrollFixedPointDeltaAxis2);
    const double point1 = event.doubleValueField(scrollPointDeltaAxis1);
    const double point2 = event.doubleValueField(scrollPointDeltaAxis2);

    ScrollSample sample;
    sample.precise = event.integerValueField(scrollIsContinuous) != 0 || fixed1 != 0 ||
                     fixed2 != 0 || point1 != 0 || point2 != 0;
    sample.preciseDelta = (point1 != 0 ? point1 : fixed1) + (point2 != 0 ? point2 : fixed2);
    sample.lineDelta = static_cast<double>(event.integerValueField(scrollLineDeltaAxis1)) +
                       static_cast<double>(event.integerValueField(scrollLineDeltaAxis2));
    sample.endsGesture = event.integerValueField(scrollPhase) == phaseEnded ||
                         event.integerValueField(scrollMomentumPhase) == phaseEnded;
    return sample;
}

} // namespace quillon
