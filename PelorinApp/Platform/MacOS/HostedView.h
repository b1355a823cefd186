#pragma once

#include "Platform/View.h"

#include <AppKit/AppKit.h>

// Views of the system's that show ours. Their origin is the top left corner, as that of ours.

@interface QuillonHostedView : NSView {
    const quillon::View* shown_;
}
/// The view is set to null before it goes.
- (void)setShownView:(const quillon::View*)view;
@end

@interface QuillonHostedButton : NSButton {
    const quillon::View* shown_;
}
- (void)setShownView:(const quillon::View*)view;
@end
