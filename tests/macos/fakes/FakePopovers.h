#pragma once

#include "Foundation.h"

#include <AppKit/AppKit.h>

#include <vector>

namespace quillon::fakes {

struct FakePopover {
    id delegate = nil;
    bool animates = true;
    NSViewController* controller = nil;
    NSSize contentSize{};
    NSPopoverBehavior behavior = NSPopoverBehaviorTransient; // not what a program would ask for
    bool isShown = false;
    NSWindow* window = nil; // as long as it is shown
    NSRect rect{};
    NSView* view = nil;
    NSRectEdge edge = NSRectEdgeMaxX;
    int timesShown = 0;
    int timesAskedToClose = 0;
};

inline FakePopover& fakePopover(NSPopover* popover) { return stateOf<FakePopover>(popover); }

/// All there were.
std::vector<NSPopover*>& fakePopovers();

} // namespace quillon::fakes
