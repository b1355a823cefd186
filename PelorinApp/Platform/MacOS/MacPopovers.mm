#include "Platform/MacOS/MacPopovers.h"

#include "Platform/MacOS/ObjectiveC.h"

#include <utility>

@interface QuillonPopoverListener : NSObject <NSPopoverDelegate> {
  @public
    quillon::MacPopover* popover; // null: gone
}
@end

@implementation QuillonPopoverListener

- (void)popoverDidClose:(NSNotification*)notification {
    (void)notification;
    if (popover != nullptr) {
        popover->closed();
    }
}

@end

namespace quillon {

namespace {

NSPopoverBehavior nativeBehavior(PopoverBehavior behavior) {
    switch (behavior) {
    case PopoverBehavior::applicationDefined:
        break;
    case PopoverBehavior::transient:
        return NSPopoverBehaviorTransient;
    case PopoverBehavior::semitransient:
        return NSPopoverBehaviorSemitransient;
    }
    return NSPopoverBehaviorApplicationDefined;
}

NSRectEdge nativeEdge(RectEdge edge) {
    switch (edge) {
    case RectEdge::minX:
        return NSRectEdgeMinX;
    case RectEdge::minY:
        break;
    case RectEdge::maxX:
        return NSRectEdgeMaxX;
    case RectEdge::maxY:
        return NSRectEdgeMaxY;
    }
    return NSRectEdgeMinY;
}

} // namespace

MacPopover::MacPopover(NativeViews& views, PopoverContents contents, std::string_view screen,
                       std::function<void()> escaped)
    : views_(views), contents_(std::move(contents)), screen_(screen), escaped_(std::move(escaped)),
      popover_([[NSPopover alloc] init]),
      controller_([[NSViewController alloc] initWithNibName:nil bundle:nil]) {
    QuillonPopoverListener* const listener = [[QuillonPopoverListener alloc] init];
    listener->popover = this;
    listener_ = listener;
    [controller_ setView:[[NSView alloc] initWithFrame:NSZeroRect]];
    [popover_ setContentViewController:controller_];
    [popover_ setDelegate:listener];
    [popover_ setAnimates:YES];
}

MacPopover::~MacPopover() {
    static_cast<QuillonPopoverListener*>(listener_)->popover = nullptr;
    [popover_ close];
}

void MacPopover::prepare() {
    if (content_) {
        return;
    }
    content_ = contents_(screen_, {.escaped =
                                       [this] {
                                           if (escaped_) {
                                               escaped_();
                                           }
                                       },
                                   .resized = [this] { takeSize(); }});
    if (!content_) {
        return;
    }
    NSView* const view = QUILLON_BRIDGE(NSView*, content_->nativeView());
    [[controller_ view] addSubview:view];
    [view setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
    takeSize();
}

void MacPopover::takeSize() {
    if (!content_) {
        return; // still being made
    }
    const Size size = content_->size();
    const NSRect place = NSMakeRect(0, 0, size.width, size.height);
    [popover_ setContentSize:place.size];
    [[controller_ view] setFrame:place];
    [QUILLON_BRIDGE(NSView*, content_->nativeView()) setFrame:place];
}

void MacPopover::setBehavior(PopoverBehavior behavior) {
    [popover_ setBehavior:nativeBehavior(behavior)];
}

bool MacPopover::isShown() const { return [popover_ isShown]; }

void MacPopover::show(const View& anchor, RectEdge preferredEdge) {
    NSView* const native = views_.view(anchor);
    if ([native window] == nil) {
        return;
    }
    prepare();
    if (content_) {
        content_->setVisible(true);
    }
    [popover_ showRelativeToRect:[native bounds]
                          ofView:native
                   preferredEdge:nativeEdge(preferredEdge)];
}

void MacPopover::close() { [popover_ performClose:nil]; }

void MacPopover::closed() {
    if (content_) {
        content_->setVisible(false);
    }
}

void MacPopover::makeKeyWindow() {
    [window() makeKeyWindow];
    if (content_) {
        [window() makeFirstResponder:QUILLON_BRIDGE(NSView*, content_->nativeView())];
    }
}

bool MacPopover::hasAttachedSheet() const {
    return (content_ && content_->hasAttachedSheet()) || [[window() sheets] count] > 0;
}

std::unique_ptr<Popover> MacPopovers::make(std::string_view screen, std::function<void()> escaped) {
    auto made = std::make_unique<MacPopover>(views_, contents_, screen, std::move(escaped));
    runLoop_.async([popover = made.get(), alive = made->alive()] {
        if (!alive.expired()) {
            popover->prepare();
        }
    });
    return made;
}

} // namespace quillon
