#pragma once

#include "Foundation.h"

#include <AppKit/AppKit.h>

#include <functional>
#include <vector>

namespace quillon::fakes {

struct FakeMenuItem {
    bool isSeparator = false;
    NSString* title = @"";
    NSString* keyEquivalent = @"";
    // These begin as on a Mac, so that whether they were set is seen by the counts alone.
    NSEventModifierFlags modifiers = NSEventModifierFlagCommand;
    int timesModifiersSet = 0;
    NSImage* image = nil;
    int timesImageSet = 0;
    NSControlStateValue state = NSControlStateValueOff;
    bool isEnabled = true;
    id target = nil;
    SEL action = nullptr;
};

struct FakeMenu {
    std::vector<NSMenuItem*> items;
    bool autoenablesItems = true;
};

/// How menus were shown, last.
class FakeMenus {
  public:
    NSMenu* shown = nil;
    NSView* view = nil;
    NSEvent* event = nil; // of a context menu
    bool isContextMenu = false;
    NSMenuItem* positioned = nil; // of another
    NSPoint location{};
    int timesShown = 0;
    std::function<void()> whileShown; // what the user does then
    void reset() { *this = {}; }
};

inline FakeMenuItem& fakeMenuItem(NSMenuItem* item) { return stateOf<FakeMenuItem>(item); }
inline FakeMenu& fakeMenu(NSMenu* menu) { return stateOf<FakeMenu>(menu); }
FakeMenus& fakeMenus();

/// The user chooses it. Whether it could be chosen.
bool choose(NSMenuItem* item);

} // namespace quillon::fakes
