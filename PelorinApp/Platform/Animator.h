#pragma once

#include "Platform/View.h"

#include <functional>
#include <memory>

namespace quillon {

enum class TimingCurve { easeInEaseOut };

/// Changes over time. Main thread only.
class Animator {
  public:
    virtual ~Animator() = default;

    /// Takes the view's alpha from what it is to `alpha` in `seconds`, then calls `completion`
    /// (which may be empty), also when the alpha was set otherwise or the view is gone by then.
    virtual void animateAlpha(const std::shared_ptr<View>& view, double alpha, double seconds,
                              TimingCurve curve, std::function<void()> completion) = 0;

    /// Sets the alpha at once and for good: an animation under way changes it no more.
    virtual void setAlphaWithoutAnimation(View& view, double alpha) = 0;
};

} // namespace quillon
