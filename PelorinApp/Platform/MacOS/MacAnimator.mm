#include "Platform/MacOS/MacAnimator.h"

#include <QuartzCore/QuartzCore.h>

#include <utility>

namespace quillon {

void MacAnimator::animateAlpha(const std::shared_ptr<View>& view, double alpha, double seconds,
                               TimingCurve /*curve*/, std::function<void()> completion) {
    NSView* const native = views_.view(*view);
    const View* const key = view.get();
    const std::weak_ptr<View> animated = view;
    const std::weak_ptr<bool> alive = alive_;
    const std::uint64_t animation = ++count_;
    running_[key] = animation;
    [NSAnimationContext
        runAnimationGroup:^(NSAnimationContext* context) {
          [context setDuration:seconds];
          [context setTimingFunction:[CAMediaTimingFunction
                                         functionWithName:kCAMediaTimingFunctionEaseInEaseOut]];
          [[native animator] setAlphaValue:alpha];
        }
        completionHandler:^{
          if (!alive.expired()) {
              completed(key, animation, alpha, animated);
          }
          if (completion) {
              completion();
          }
        }];
}

/// Only now is the view told: while it runs, the system's own view alone knows the alpha.
void MacAnimator::completed(const View* view, std::uint64_t animation, double alpha,
                            const std::weak_ptr<View>& alive) {
    const auto latest = running_.find(view);
    if (latest == running_.end() || latest->second != animation) {
        return;
    }
    running_.erase(latest);
    if (const auto faded = alive.lock()) {
        faded->setAlphaValue(alpha);
    }
}

void MacAnimator::setAlphaWithoutAnimation(View& view, double alpha) {
    running_.erase(&view);
    view.setAlphaValue(alpha);
    NSView* const native = views_.view(view);
    [NSAnimationContext beginGrouping];
    [[NSAnimationContext currentContext] setDuration:0];
    [[NSAnimationContext currentContext] setAllowsImplicitAnimation:NO];
    [[native animator] setAlphaValue:alpha]; // takes the place of an animation under way
    [native setAlphaValue:alpha];            // and this is so at once
    [NSAnimationContext endGrouping];
}

} // namespace quillon
