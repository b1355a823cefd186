#pragma once

#include "FakeViews.h"

#include <AppKit/AppKit.h>

#include <vector>

namespace quillon::fakes {

struct FakeStatusItem {
    double length = 0;
    bool isVisible = false;
    NSStatusBarButton* button = nil; // none while there is a view
    NSView* view = nil;
    NSWindow* window = nil; // in which it is shown
    bool isRemoved = false;
};

class FakeStatusBar {
  public:
    bool granting = true;
    bool grantingButtons = true;
    double thickness = 22;
    NSSize buttonSize{24, 22};
    std::vector<NSStatusItem*> items; // all there were
    void reset() { *this = {}; }
};

inline FakeStatusItem& fakeStatusItem(NSStatusItem* item) { return stateOf<FakeStatusItem>(item); }
FakeStatusBar& fakeStatusBar();

} // namespace quillon::fakes
