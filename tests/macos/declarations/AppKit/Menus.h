#pragma once

#include <AppKit/Controls.h>

@class NSMenuItem;

@interface NSMenu : NSObject <NSCopying, NSCoding>
- (instancetype)initWithTitle:(NSString*)title;
+ (void)popUpContextMenu:(NSMenu*)menu withEvent:(NSEvent*)event forView:(NSView*)view;
- (BOOL)popUpMenuPositioningItem:(NSMenuItem*)item
                      atLocation:(NSPoint)location
                          inView:(NSView*)view API_AVAILABLE(macos(10.6));
- (void)addItem:(NSMenuItem*)newItem;
@property(copy) NSArray<NSMenuItem*>* itemArray;
@property BOOL autoenablesItems;
@end

@interface NSMenuItem : NSObject <NSCopying, NSCoding>
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)string
                       action:(SEL)selector
                keyEquivalent:(NSString*)charCode;
@property(getter=isSeparatorItem, readonly) BOOL separatorItem;
@property(copy) NSString* title;
@property(copy) NSString* keyEquivalent;
@property NSEventModifierFlags keyEquivalentModifierMask;
@property(strong) NSImage* image;
@property NSControlStateValue state;
@property(getter=isEnabled) BOOL enabled;
@property(weak) id target;
@property SEL action;
@end
