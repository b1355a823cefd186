#pragma once

#include <AppKit/Events.h>
#include <AppKit/Text.h>

@class NSView;
@class NSWindow;

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) {
    NSViewNotSizable = 0,
    NSViewMinXMargin = 1,
    NSViewWidthSizable = 2,
    NSViewMaxXMargin = 4,
    NSViewMinYMargin = 8,
    NSViewHeightSizable = 16,
    NSViewMaxYMargin = 32,
};

typedef NS_ENUM(NSUInteger, NSFocusRingType) {
    NSFocusRingTypeDefault = 0,
    NSFocusRingTypeNone = 1,
    NSFocusRingTypeExterior = 2,
};

@protocol NSAnimatablePropertyContainer
- (instancetype)animator;
@end

@interface NSResponder : NSObject <NSCoding>
- (instancetype)init;
- (void)mouseDown:(NSEvent*)event;
- (void)rightMouseDown:(NSEvent*)event;
- (void)mouseUp:(NSEvent*)event;
- (void)rightMouseUp:(NSEvent*)event;
@property(readonly) BOOL acceptsFirstResponder;
@end

@interface NSView : NSResponder <NSAnimatablePropertyContainer>
- (instancetype)initWithFrame:(NSRect)frameRect;
@property(assign, readonly) NSWindow* window;
@property(assign, readonly) NSView* superview;
@property(copy) NSArray<__kindof NSView*>* subviews;
@property(getter=isHidden) BOOL hidden;
- (void)addSubview:(NSView*)view;
- (void)removeFromSuperview;
@property NSAutoresizingMaskOptions autoresizingMask;
- (void)setFrameSize:(NSSize)newSize;
@property NSRect frame;
@property NSRect bounds;
@property(getter=isFlipped, readonly) BOOL flipped;
@property CGFloat alphaValue;
@property BOOL needsDisplay;
- (void)drawRect:(NSRect)dirtyRect;
- (NSRect)convertRect:(NSRect)rect toView:(NSView*)view;
@property(copy) NSString* toolTip;
@property(readonly) NSSize fittingSize;
@property NSFocusRingType focusRingType;
@end

@interface NSWindow : NSResponder
- (NSRect)convertRectToScreen:(NSRect)rect;
- (void)makeKeyWindow;
- (BOOL)makeFirstResponder:(NSResponder*)responder;
@property(readonly, copy) NSArray<__kindof NSWindow*>* sheets;
@property(getter=isVisible, readonly) BOOL visible;
@end

@interface NSViewController : NSResponder
- (instancetype)initWithNibName:(NSString*)nibNameOrNil bundle:(NSBundle*)nibBundleOrNil;
@property(strong) NSView* view;
@end
