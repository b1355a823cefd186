#include "FakeAnimations.h"
#include "Foundation.h"

#include <Block.h>

#include <algorithm>

using namespace quillon::fakes;

CAMediaTimingFunctionName const kCAMediaTimingFunctionEaseInEaseOut = @"easeInEaseOut";

namespace {
struct ContextState {
    std::size_t group = 0;
    CAMediaTimingFunction* timing = nil;
};
struct TimingState {
    std::string name;
};
struct ProxyState {
    NSView* view = nil;
};
} // namespace

@implementation CAMediaTimingFunction
+ (instancetype)functionWithName:(CAMediaTimingFunctionName)name {
    CAMediaTimingFunction* made = [[self alloc] init];
    stateOf<TimingState>(made).name = utf8(name);
    return made;
}
- (void)encodeWithCoder:(NSCoder*)coder {
    (void)coder;
}
- (instancetype)initWithCoder:(NSCoder*)coder {
    (void)coder;
    return nil;
}
+ (BOOL)supportsSecureCoding {
    return YES;
}
@end

@implementation NSAnimationContext
+ (NSAnimationContext*)ofGroup:(std::size_t)group {
    NSAnimationContext* made = [[self alloc] init];
    stateOf<ContextState>(made).group = group;
    return made;
}
+ (void)runAnimationGroup:(void(NS_NOESCAPE ^)(NSAnimationContext*))changes
        completionHandler:(void (^)(void))completion {
    auto& groups = fakeAnimations().groups;
    const std::size_t group = groups.size();
    groups.emplace_back();
    if (completion)
        groups.back().completion = Block_copy(completion);
    fakeAnimations().open.push_back(group);
    changes([self ofGroup:group]);
    fakeAnimations().open.pop_back();
}
+ (void)beginGrouping {
    fakeAnimations().open.push_back(fakeAnimations().groups.size());
    fakeAnimations().groups.emplace_back();
}
+ (void)endGrouping {
    fakeAnimations().open.pop_back();
}
+ (NSAnimationContext*)currentContext {
    return [self ofGroup:fakeAnimations().open.back()];
}
- (FakeAnimations::Group&)group {
    return fakeAnimations().groups[stateOf<ContextState>(self).group];
}
- (NSTimeInterval)duration {
    return [self group].duration;
}
- (void)setDuration:(NSTimeInterval)duration {
    [self group].duration = duration;
}
- (CAMediaTimingFunction*)timingFunction {
    return stateOf<ContextState>(self).timing;
}
- (void)setTimingFunction:(CAMediaTimingFunction*)function {
    stateOf<ContextState>(self).timing = function;
    [self group].timingFunction = stateOf<TimingState>(function).name;
}
- (BOOL)allowsImplicitAnimation {
    return [self group].allowsImplicitAnimation;
}
- (void)setAllowsImplicitAnimation:(BOOL)allows {
    [self group].allowsImplicitAnimation = allows;
}
@end

@interface FakeAnimatorProxy : NSObject
- (instancetype)initFor:(NSView*)view;
@end

@implementation FakeAnimatorProxy
- (instancetype)initFor:(NSView*)view {
    self = [super init];
    stateOf<ProxyState>(self).view = view;
    return self;
}
- (void)setAlphaValue:(CGFloat)alpha {
    fakeAnimations().animateAlpha(stateOf<ProxyState>(self).view, alpha);
}
@end

namespace quillon::fakes {

FakeAnimations& fakeAnimations() {
    static FakeAnimations animations;
    return animations;
}

void FakeAnimations::animateAlpha(NSView* view, double alpha) {
    std::erase_if(running, [&](const Change& change) { return change.view == view; });
    const std::size_t group = open.back();
    if (groups[group].duration <= 0)
        [view setAlphaValue:alpha];
    else
        running.push_back({view, [view alphaValue], alpha, group});
}

void FakeAnimations::advance(double seconds) {
    constexpr double slack = 1e-9;
    for (Group& group : groups)
        group.elapsed += seconds;
    for (const Change& change : running) {
        const Group& group = groups[change.group];
        const double part = std::min(group.elapsed / group.duration, 1.0);
        [change.view setAlphaValue:change.from + (change.to - change.from) * part];
    }
    const auto isOver = [&](const Group& group) { return group.elapsed >= group.duration - slack; };
    std::erase_if(running, [&](const Change& change) { return isOver(groups[change.group]); });
    for (std::size_t index = 0; index < groups.size(); ++index) {
        if (!groups[index].isOver && isOver(groups[index])) {
            groups[index].isOver = true;
            if (groups[index].completion)
                groups[index].completion();
        }
    }
}

} // namespace quillon::fakes
