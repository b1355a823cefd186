#pragma once

#include "Platform/Animator.h"

#include <memory>
#include <vector>

namespace quillon {

/// Animations on Qt's clock: about 60 steps a second while something changes, none otherwise. A
/// view is held weakly. What is under way when the animator goes stays as it is, uncompleted.
class QtAnimator final : public Animator {
  public:
    QtAnimator();
    ~QtAnimator() override;

    /// An earlier animation of the same view changes it no more; its completion is still called.
    /// Never calls the completion before it returns.
    void animateAlpha(const std::shared_ptr<View>& view, double alpha, double seconds,
                      TimingCurve curve, std::function<void()> completion) override;

    void setAlphaWithoutAnimation(View& view, double alpha) override;

    /// Animations that change something at this moment.
    [[nodiscard]] int running() const;

  private:
    class Fade;

    void stop(const View& view);
    void finished(const Fade& fade);

    std::vector<std::unique_ptr<Fade>> fades_;
};

} // namespace quillon
