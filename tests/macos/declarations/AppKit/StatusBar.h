#pragma once

#include <AppKit/Controls.h>

@class NSStatusItem;

static const CGFloat NSVariableStatusItemLength = -1.0;
static const CGFloat NSSquareStatusItemLength = -2.0;

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@property(readonly) CGFloat thickness;
@end

@interface NSStatusBarButton : NSButton
@end

@interface NSStatusItem : NSObject
@property(readonly, weak) NSStatusBar* statusBar;
@property CGFloat length;
@property(readonly, strong) NSStatusBarButton* button API_AVAILABLE(macos(10.10));
@property(getter=isVisible) BOOL visible API_AVAILABLE(macos(10.12));
@end

@interface NSStatusItem (NSStatusItemDeprecated)
@property(strong) NSView* view __attribute__((availability(
    macos, introduced=10.0, deprecated=10.14, message="Use the standard button property instead")));
@end
