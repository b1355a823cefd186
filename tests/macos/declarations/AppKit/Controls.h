#pragma once

#include <AppKit/Images.h>
#include <AppKit/Views.h>

typedef NS_ENUM(NSUInteger, NSImageScaling) {
    NSImageScaleProportionallyDown = 0,
    NSImageScaleAxesIndependently = 1,
    NSImageScaleNone = 2,
    NSImageScaleProportionallyUpOrDown = 3,
};

typedef NS_ENUM(NSUInteger, NSCellImagePosition) {
    NSNoImage = 0,
    NSImageOnly = 1,
    NSImageLeft = 2,
    NSImageRight = 3,
    NSImageBelow = 4,
    NSImageAbove = 5,
    NSImageOverlaps = 6,
    NSImageLeading = 7,
    NSImageTrailing = 8,
};

typedef NS_ENUM(NSUInteger, NSBezelStyle) {
    NSBezelStyleRounded = 1,
    NSBezelStyleRegularSquare = 2,
    NSBezelStyleShadowlessSquare = 6,
    NSBezelStyleCircular = 7,
    NSBezelStyleHelpButton = 9,
};

typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueMixed = -1;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;

@interface NSCell : NSObject <NSCopying, NSCoding>
@property NSTextAlignment alignment;
@end

@interface NSActionCell : NSCell
@end

@interface NSButtonCell : NSActionCell
@end

@interface NSControl : NSView
@property(weak) id target;
@property SEL action;
@property(getter=isEnabled) BOOL enabled;
@property BOOL refusesFirstResponder;
@property(strong) NSFont* font;
@property NSTextAlignment alignment;
- (NSInteger)sendActionOn:(NSEventMask)mask;
- (BOOL)sendAction:(SEL)action to:(id)target;
@property(strong) __kindof NSCell* cell;
@end

@interface NSButton : NSControl
@property(copy) NSString* title;
@property(copy) NSAttributedString* attributedTitle;
@property(getter=isBordered) BOOL bordered;
@property NSBezelStyle bezelStyle;
@property(strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@property NSImageScaling imageScaling;
@property(copy) NSColor* contentTintColor API_AVAILABLE(macos(10.14));
@end
