#pragma once

#include <AppKit/Views.h>

typedef NS_ENUM(NSInteger, NSPopoverBehavior) {
    NSPopoverBehaviorApplicationDefined = 0,
    NSPopoverBehaviorTransient = 1,
    NSPopoverBehaviorSemitransient = 2,
};

@protocol NSPopoverDelegate <NSObject>
@optional
- (void)popoverDidClose:(NSNotification*)notification;
@end

@interface NSPopover : NSResponder
- (instancetype)init;
@property(weak) id<NSPopoverDelegate> delegate;
@property BOOL animates;
@property(strong) NSViewController* contentViewController;
@property NSSize contentSize;
@property NSPopoverBehavior behavior;
@property(getter=isShown, readonly) BOOL shown;
- (void)showRelativeToRect:(NSRect)positioningRect
                    ofView:(NSView*)positioningView
             preferredEdge:(NSRectEdge)preferredEdge;
- (void)performClose:(id)sender;
- (void)close;
@end
