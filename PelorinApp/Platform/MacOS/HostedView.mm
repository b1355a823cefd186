#include "Platform/MacOS/HostedView.h"

#include "Platform/MacOS/NativeDrawing.h"

@implementation QuillonHostedView
- (void)setShownView:(const quillon::View*)view {
    shown_ = view;
}

- (BOOL)isFlipped {
    return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
    (void)dirtyRect;
    quillon::drawNatively(shown_);
}

@end

@implementation QuillonHostedButton
- (void)setShownView:(const quillon::View*)view {
    shown_ = view;
}

- (BOOL)isFlipped {
    return YES;
}

- (void)drawRect:(NSRect)dirtyRect {
    [super drawRect:dirtyRect]; // its look
    quillon::drawNatively(shown_);
}

@end
