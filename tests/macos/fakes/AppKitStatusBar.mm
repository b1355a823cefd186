#include "FakeStatusBar.h"

using namespace quillon::fakes;

@implementation NSStatusBarButton
@end

namespace {

/// In the item's window, borderless as the system makes it.
NSStatusBarButton* makeButton(NSStatusItem* item) {
    if (!fakeStatusBar().grantingButtons)
        return nil;
    const NSSize size = fakeStatusBar().buttonSize;
    NSStatusBarButton* button =
        [[NSStatusBarButton alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
    fakeView(button).window = fakeStatusItem(item).window;
    fakeButton(button).isBordered = false;
    return button;
}

} // namespace

@implementation NSStatusBar
+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* bar = nil;
    if (!bar)
        bar = [[NSStatusBar alloc] init];
    return bar;
}
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    if (!fakeStatusBar().granting)
        return nil;
    NSStatusItem* item = [[NSStatusItem alloc] init];
    FakeStatusItem& state = fakeStatusItem(item);
    state.length = length;
    state.window = [[NSWindow alloc] init];
    state.button = makeButton(item);
    fakeStatusBar().items.push_back(item);
    return item;
}
- (void)removeStatusItem:(NSStatusItem*)item {
    fakeStatusItem(item).isRemoved = true;
}
- (CGFloat)thickness {
    return fakeStatusBar().thickness;
}
@end

@implementation NSStatusItem
- (NSStatusBar*)statusBar {
    return [NSStatusBar systemStatusBar];
}
- (CGFloat)length {
    return fakeStatusItem(self).length;
}
- (void)setLength:(CGFloat)length {
    fakeStatusItem(self).length = length;
}
- (NSStatusBarButton*)button {
    return fakeStatusItem(self).button;
}
- (BOOL)isVisible {
    return fakeStatusItem(self).isVisible;
}
- (void)setVisible:(BOOL)visible {
    fakeStatusItem(self).isVisible = visible;
}
- (NSView*)view {
    return fakeStatusItem(self).view;
}
/// Takes the button away; without a view there is a new one.
- (void)setView:(NSView*)view {
    FakeStatusItem& state = fakeStatusItem(self);
    if (state.view)
        fakeView(state.view).window = nil;
    if (state.button)
        fakeView(state.button).window = nil;
    state.view = view;
    if (view)
        fakeView(view).window = state.window;
    state.button = view ? nil : makeButton(self);
}
@end

namespace quillon::fakes {

FakeStatusBar& fakeStatusBar() {
    static FakeStatusBar bar;
    return bar;
}

} // namespace quillon::fakes
