#pragma once

#include "Platform/Animator.h"
#include "Platform/MacOS/NativeViews.h"

#include <cstdint>
#include <unordered_map>

namespace quillon {

/// The system's animations.
class MacAnimator final : public Animator {
  public:
    /// `views` must outlive this object.
    explicit MacAnimator(NativeViews& views) : views_(views) {}

    void animateAlpha(const std::shared_ptr<View>& view, double alpha, double seconds,
                      TimingCurve curve, std::function<void()> completion) override;
    void setAlphaWithoutAnimation(View& view, double alpha) override;

  private:
    void completed(const View* view, std::uint64_t animation, double alpha,
                   const std::weak_ptr<View>& alive);

    NativeViews& views_;
    std::uint64_t count_ = 0;
    std::unordered_map<const View*, std::uint64_t> running_; // the latest animation of each
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

} // namespace quillon
