#include "FakeTimers.h"

#include "Foundation.h"

#include <Block.h>

using quillon::fakes::fakeTimers;
using quillon::fakes::stateOf;
using quillon::fakes::utf8;

NSRunLoopMode const NSDefaultRunLoopMode = @"kCFRunLoopDefaultMode";
NSRunLoopMode const NSRunLoopCommonModes = @"kCFRunLoopCommonModes";

namespace {

struct TimerState {
    NSTimeInterval interval = 0;
    bool repeats = false;
    bool isValid = true;
    void (^block)(NSTimer*) = nullptr;
};

} // namespace

@implementation NSTimer

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer*))block {
    NSTimer* timer = [[NSTimer alloc] init];
    stateOf<TimerState>(timer) = {interval, repeats, true,
                                  (void (^)(NSTimer*))_Block_copy((void*)block)};
    return timer;
}
+ (NSTimer*)scheduledTimerWithTimeInterval:(NSTimeInterval)interval
                                   repeats:(BOOL)repeats
                                     block:(void (^)(NSTimer*))block {
    NSTimer* timer = [self timerWithTimeInterval:interval repeats:repeats block:block];
    [[NSRunLoop currentRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
    return timer;
}
- (NSTimeInterval)timeInterval {
    return stateOf<TimerState>(self).interval;
}
- (BOOL)isValid {
    return stateOf<TimerState>(self).isValid;
}
- (void)fire {
    auto& state = stateOf<TimerState>(self);
    if (!state.isValid)
        return;
    state.block(self);
    if (!state.repeats)
        [self invalidate];
}
// As the system, it lets go of its block.
- (void)invalidate {
    auto& state = stateOf<TimerState>(self);
    if (!state.isValid)
        return;
    state.isValid = false;
    fakeTimers().remove((void*)self);
    _Block_release((void*)state.block);
}

@end

@implementation NSRunLoop
+ (NSRunLoop*)mainRunLoop {
    static NSRunLoop* const loop = [[NSRunLoop alloc] init];
    return loop;
}
+ (NSRunLoop*)currentRunLoop {
    return [self mainRunLoop];
}
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode {
    const auto& state = stateOf<TimerState>(timer);
    fakeTimers().schedules.push_back({state.interval, state.repeats, utf8(mode)});
    fakeTimers().add((void*)timer);
}
@end

@implementation NSProcessInfo
+ (NSProcessInfo*)processInfo {
    static NSProcessInfo* const info = [[NSProcessInfo alloc] init];
    return info;
}
- (NSTimeInterval)systemUptime {
    return fakeTimers().uptime;
}
@end

namespace quillon::fakes {

int FakeTimers::validCount() const { return static_cast<int>(timers_.size()); }

void FakeTimers::fire() {
    for (void* timer : std::vector<void*>(timers_))
        [(NSTimer*)timer fire];
}

void FakeTimers::reset() {
    for (void* timer : std::vector<void*>(timers_))
        [(NSTimer*)timer invalidate];
    schedules.clear();
    uptime = 0;
}

FakeTimers& fakeTimers() {
    static FakeTimers timers;
    return timers;
}

} // namespace quillon::fakes
