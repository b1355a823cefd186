#include "Platform/MacOS/RepeatingTimer.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <utility>

namespace quillon {

namespace {

class RepeatingTimer final : public Timer {
  public:
    explicit RepeatingTimer(NSTimer* timer) : timer_(timer) {}
    void cancel() override { [timer_ invalidate]; }

  private:
    NSTimer* timer_;
};

} // namespace

TimerRef scheduleRepeatingTimer(double seconds, std::function<void()> work) {
    const auto shared = std::make_shared<std::function<void()>>(std::move(work));
    NSTimer* timer = [NSTimer scheduledTimerWithTimeInterval:seconds
                                                     repeats:YES
                                                       block:^(NSTimer* /*fired*/) {
                                                         // The work may cancel its own timer, which
                                                         // lets go of this block.
                                                         const auto running = shared;
                                                         (*running)();
                                                       }];
    return std::make_shared<RepeatingTimer>(timer);
}

} // namespace quillon
