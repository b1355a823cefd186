#include "FakePopovers.h"

#include "FakeViews.h"

using namespace quillon::fakes;

@implementation NSPopover
- (instancetype)init {
    self = [super init];
    fakePopovers().push_back(self);
    return self;
}
- (id)delegate {
    return fakePopover(self).delegate;
}
- (void)setDelegate:(id)delegate {
    fakePopover(self).delegate = delegate;
}
- (BOOL)animates {
    return fakePopover(self).animates;
}
- (void)setAnimates:(BOOL)animates {
    fakePopover(self).animates = animates;
}
- (NSViewController*)contentViewController {
    return fakePopover(self).controller;
}
- (void)setContentViewController:(NSViewController*)controller {
    fakePopover(self).controller = controller;
}
- (NSSize)contentSize {
    return fakePopover(self).contentSize;
}
- (void)setContentSize:(NSSize)size {
    fakePopover(self).contentSize = size;
}
- (NSPopoverBehavior)behavior {
    return fakePopover(self).behavior;
}
- (void)setBehavior:(NSPopoverBehavior)behavior {
    fakePopover(self).behavior = behavior;
}
- (BOOL)isShown {
    return fakePopover(self).isShown;
}
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)edge {
    FakePopover& state = fakePopover(self);
    state.rect = rect;
    state.view = view;
    state.edge = edge;
    state.isShown = true;
    ++state.timesShown;
    state.window = [[NSWindow alloc] init];
    fakeView([state.controller view]).window = state.window;
}
- (void)performClose:(id)sender {
    (void)sender;
    ++fakePopover(self).timesAskedToClose;
    [self close];
}
- (void)close {
    FakePopover& state = fakePopover(self);
    if (!state.isShown)
        return;
    state.isShown = false;
    fakeView([state.controller view]).window = nil;
    if ([state.delegate respondsToSelector:@selector(popoverDidClose:)])
        [state.delegate popoverDidClose:nil];
}
@end

namespace quillon::fakes {

std::vector<NSPopover*>& fakePopovers() {
    static std::vector<NSPopover*> popovers;
    return popovers;
}

} // namespace quillon::fakes
