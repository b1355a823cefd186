#pragma once

namespace quillon {

class Event;

/// What the edge gestures need to know of one scroll event.
struct ScrollSample {
    bool precise = false;     // continuous scrolling, as of a trackpad; else a wheel's lines
    bool endsGesture = false; // the fingers have left: what was gathered is void
    double lineDelta = 0;     // both axes added
    double preciseDelta = 0;  // both axes added
};

[[nodiscard]] ScrollSample classifyScroll(const Event& event);

} // namespace quillon
