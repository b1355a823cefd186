#pragma once

#include "Foundation.h"

#include <AppKit/AppKit.h>

#include <vector>

namespace quillon::fakes {

/// What a view keeps beside what it answers.
struct FakeView {
    NSRect frame{};
    CGFloat alpha = 1;
    NSString* toolTip = nil;
    NSView* superview = nil;
    std::vector<NSView*> subviews;
    NSWindow* window = nil; // of the outermost view
    NSAutoresizingMaskOptions autoresizing = NSViewNotSizable;
    NSFocusRingType focusRing = NSFocusRingTypeDefault;
    NSSize fittingSize{};
    int timesMarked = 0; // to be drawn again
};

struct FakeControl {
    id target = nil;
    SEL action = nullptr;
    bool isEnabled = true;
    bool refusesFirstResponder = false;
    NSFont* font = nil;
    NSTextAlignment alignment = NSTextAlignmentNatural;
    NSEventMask sendsActionOn = NSEventMaskLeftMouseUp;
    NSCell* cell = nil;
};

struct FakeButton {
    NSString* title = @"Button";
    NSAttributedString* attributedTitle = nil;
    bool isBordered = true;
    NSBezelStyle bezelStyle = NSBezelStyleRounded;
    NSImage* image = nil;
    NSCellImagePosition imagePosition = NSNoImage;
    NSImageScaling imageScaling = NSImageScaleNone;
    NSColor* contentTintColor = nil;
};

struct FakeWindow {
    NSPoint origin{}; // of its content, on the screen
    std::vector<NSWindow*> sheets;
    int timesMadeKey = 0;
    NSResponder* firstResponder = nil;
};

inline FakeView& fakeView(NSView* view) { return stateOf<FakeView>(view); }
inline FakeControl& fakeControl(NSControl* control) { return stateOf<FakeControl>(control); }
inline FakeButton& fakeButton(NSButton* button) { return stateOf<FakeButton>(button); }
inline FakeWindow& fakeWindow(NSWindow* window) { return stateOf<FakeWindow>(window); }

/// Lets the event come upon the control: it sends its action if it is one that it sends upon.
/// Whether it did.
bool use(NSControl* control, NSEventType event);

} // namespace quillon::fakes
