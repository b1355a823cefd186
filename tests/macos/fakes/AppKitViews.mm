#include "FakeViews.h"

#include <utility>

using namespace quillon::fakes;

@implementation NSResponder
- (instancetype)init {
    return [super init];
}
- (void)encodeWithCoder:(NSCoder*)coder {
    (void)coder;
}
- (instancetype)initWithCoder:(NSCoder*)coder {
    (void)coder;
    return nil;
}
- (void)mouseDown:(NSEvent*)event {
    (void)event;
}
- (void)rightMouseDown:(NSEvent*)event {
    (void)event;
}
- (void)mouseUp:(NSEvent*)event {
    (void)event;
}
- (void)rightMouseUp:(NSEvent*)event {
    (void)event;
}
- (BOOL)acceptsFirstResponder {
    return NO;
}
@end

@interface FakeAnimatorProxy : NSObject
- (instancetype)initFor:(NSView*)view;
@end

@implementation NSView
- (instancetype)initWithFrame:(NSRect)frame {
    self = [super init];
    fakeView(self).frame = frame;
    return self;
}
- (id)animator {
    return (id)[[FakeAnimatorProxy alloc] initFor:self];
}
- (NSWindow*)window {
    FakeView& state = fakeView(self);
    return state.superview ? [state.superview window] : state.window;
}
- (NSView*)superview {
    return fakeView(self).superview;
}
- (NSArray*)subviews {
    const auto& views = fakeView(self).subviews;
    return arrayOf({views.begin(), views.end()});
}
- (void)addSubview:(NSView*)view {
    [view removeFromSuperview];
    fakeView(view).superview = self;
    fakeView(self).subviews.push_back(view);
}
- (void)removeFromSuperview {
    FakeView& state = fakeView(self);
    if (state.superview)
        std::erase(fakeView(state.superview).subviews, self);
    state.superview = nil;
}
- (NSAutoresizingMaskOptions)autoresizingMask {
    return fakeView(self).autoresizing;
}
- (void)setAutoresizingMask:(NSAutoresizingMaskOptions)mask {
    fakeView(self).autoresizing = mask;
}
- (NSRect)frame {
    return fakeView(self).frame;
}
- (void)setFrame:(NSRect)frame {
    fakeView(self).frame = frame;
}
- (NSRect)bounds {
    const NSSize size = fakeView(self).frame.size;
    return NSMakeRect(0, 0, size.width, size.height);
}
- (BOOL)isFlipped {
    return NO;
}
- (CGFloat)alphaValue {
    return fakeView(self).alpha;
}
- (void)setAlphaValue:(CGFloat)alpha {
    fakeView(self).alpha = alpha;
}
- (BOOL)needsDisplay {
    return fakeView(self).timesMarked > 0;
}
- (void)setNeedsDisplay:(BOOL)needs {
    if (needs)
        ++fakeView(self).timesMarked;
}
- (void)drawRect:(NSRect)rect {
    (void)rect;
}
/// To its window's coordinates only, all views being flipped or none with height.
- (NSRect)convertRect:(NSRect)rect toView:(NSView*)view {
    (void)view;
    for (NSView* up = self; up; up = fakeView(up).superview) {
        rect.origin.x += fakeView(up).frame.origin.x;
        rect.origin.y += fakeView(up).frame.origin.y;
    }
    return rect;
}
- (NSString*)toolTip {
    return fakeView(self).toolTip;
}
- (void)setToolTip:(NSString*)text {
    fakeView(self).toolTip = text;
}
- (NSSize)fittingSize {
    return fakeView(self).fittingSize;
}
- (NSFocusRingType)focusRingType {
    return fakeView(self).focusRing;
}
- (void)setFocusRingType:(NSFocusRingType)type {
    fakeView(self).focusRing = type;
}
@end

@implementation NSWindow
- (NSRect)convertRectToScreen:(NSRect)rect {
    const NSPoint origin = fakeWindow(self).origin;
    return NSMakeRect(rect.origin.x + origin.x, rect.origin.y + origin.y, rect.size.width,
                      rect.size.height);
}
- (void)makeKeyWindow {
    ++fakeWindow(self).timesMadeKey;
}
- (BOOL)makeFirstResponder:(NSResponder*)responder {
    fakeWindow(self).firstResponder = responder;
    return YES;
}
- (NSArray*)sheets {
    const auto& sheets = fakeWindow(self).sheets;
    return arrayOf({sheets.begin(), sheets.end()});
}
- (BOOL)isVisible {
    return YES;
}
@end

namespace {
struct Controller {
    NSView* view = nil;
};
} // namespace

@implementation NSViewController
- (instancetype)initWithNibName:(NSString*)name bundle:(NSBundle*)bundle {
    (void)name;
    (void)bundle;
    return [super init];
}
- (NSView*)view {
    return stateOf<Controller>(self).view;
}
- (void)setView:(NSView*)view {
    stateOf<Controller>(self).view = view;
}
@end

namespace {
struct Cell {
    NSTextAlignment alignment = NSTextAlignmentNatural;
};
} // namespace

@implementation NSCell
- (void)encodeWithCoder:(NSCoder*)coder {
    (void)coder;
}
- (instancetype)initWithCoder:(NSCoder*)coder {
    (void)coder;
    return nil;
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}
- (NSTextAlignment)alignment {
    return stateOf<Cell>(self).alignment;
}
- (void)setAlignment:(NSTextAlignment)alignment {
    stateOf<Cell>(self).alignment = alignment;
}
@end

@implementation NSActionCell
@end
@implementation NSButtonCell
@end

@implementation NSControl
- (id)target {
    return fakeControl(self).target;
}
- (void)setTarget:(id)target {
    fakeControl(self).target = target;
}
- (SEL)action {
    return fakeControl(self).action;
}
- (void)setAction:(SEL)action {
    fakeControl(self).action = action;
}
- (BOOL)isEnabled {
    return fakeControl(self).isEnabled;
}
- (void)setEnabled:(BOOL)enabled {
    fakeControl(self).isEnabled = enabled;
}
- (BOOL)refusesFirstResponder {
    return fakeControl(self).refusesFirstResponder;
}
- (void)setRefusesFirstResponder:(BOOL)refuses {
    fakeControl(self).refusesFirstResponder = refuses;
}
- (NSFont*)font {
    return fakeControl(self).font;
}
- (void)setFont:(NSFont*)font {
    fakeControl(self).font = font;
}
- (NSTextAlignment)alignment {
    return fakeControl(self).alignment;
}
- (void)setAlignment:(NSTextAlignment)alignment {
    fakeControl(self).alignment = alignment;
}
- (NSInteger)sendActionOn:(NSEventMask)mask {
    return (NSInteger)std::exchange(fakeControl(self).sendsActionOn, mask);
}
- (BOOL)sendAction:(SEL)action to:(id)target {
    if (!action || !target)
        return NO;
    [target performSelector:action withObject:self];
    return YES;
}
- (NSCell*)cell {
    return fakeControl(self).cell;
}
- (void)setCell:(NSCell*)cell {
    fakeControl(self).cell = cell;
}
@end

@implementation NSButton
- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    fakeControl(self).cell = [[NSButtonCell alloc] init];
    return self;
}
- (BOOL)isFlipped {
    return YES;
}
- (NSString*)title {
    return fakeButton(self).title;
}
- (void)setTitle:(NSString*)title {
    fakeButton(self).title = title;
}
- (NSAttributedString*)attributedTitle {
    return fakeButton(self).attributedTitle;
}
/// It is the title, too.
- (void)setAttributedTitle:(NSAttributedString*)title {
    fakeButton(self).attributedTitle = title;
    fakeButton(self).title = [title string];
}
- (BOOL)isBordered {
    return fakeButton(self).isBordered;
}
- (void)setBordered:(BOOL)bordered {
    fakeButton(self).isBordered = bordered;
}
- (NSBezelStyle)bezelStyle {
    return fakeButton(self).bezelStyle;
}
- (void)setBezelStyle:(NSBezelStyle)style {
    fakeButton(self).bezelStyle = style;
}
- (NSImage*)image {
    return fakeButton(self).image;
}
- (void)setImage:(NSImage*)image {
    fakeButton(self).image = image;
}
- (NSCellImagePosition)imagePosition {
    return fakeButton(self).imagePosition;
}
- (void)setImagePosition:(NSCellImagePosition)position {
    fakeButton(self).imagePosition = position;
}
- (NSImageScaling)imageScaling {
    return fakeButton(self).imageScaling;
}
- (void)setImageScaling:(NSImageScaling)scaling {
    fakeButton(self).imageScaling = scaling;
}
- (NSColor*)contentTintColor {
    return fakeButton(self).contentTintColor;
}
- (void)setContentTintColor:(NSColor*)color {
    fakeButton(self).contentTintColor = color;
}
@end

namespace quillon::fakes {

bool use(NSControl* control, NSEventType event) {
    const FakeControl& state = fakeControl(control);
    return state.isEnabled && (state.sendsActionOn & (NSEventMask{1} << event)) != 0 &&
           [control sendAction:state.action to:state.target];
}

} // namespace quillon::fakes
