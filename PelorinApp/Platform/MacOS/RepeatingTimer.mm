#include "Platform/MacOS/RepeatingTimer.h"

#include "Platform/MacOS/SharedHandler.h"

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
    const SharedHandler<> fired(std::move(work)); // which may cancel its own timer
    NSTimer* timer = [NSTimer scheduledTimerWithTimeInterval:seconds
                                                     repeats:YES
                                                       block:^(NSTimer* /*timer*/) {
                                                         fired();
                                                       }];
    return std::make_shared<RepeatingTimer>(timer);
}

} // namespace quillon
