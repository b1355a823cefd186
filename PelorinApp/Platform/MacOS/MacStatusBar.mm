#include "Platform/MacOS/MacStatusBar.h"

#include "Platform/MacOS/NativeLooks.h"

#include <utility>

namespace quillon {

namespace {

/// A view of one's own in an item is deprecated, but there is no other way to have the item show
/// nothing but that.
void setView(NSStatusItem* item, NSView* view) {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
    [item setView:view];
#pragma clang diagnostic pop
}

} // namespace

Rect MacStatusButton::bounds() const { return rectOf([native_ bounds]); }

Size MacStatusButton::fittingSize() const {
    const NSSize size = [native_ fittingSize];
    return {size.width, size.height};
}

ButtonCell* MacStatusButton::cell() {
    return [[native_ cell] isKindOfClass:[NSButtonCell class]] ? &cell_ : nullptr;
}

MacStatusItem::MacStatusItem(NSStatusItem* item, NativeViews& views) : views_(views), item_(item) {}

MacStatusItem::~MacStatusItem() {
    tree_ = nullptr;
    [[NSStatusBar systemStatusBar] removeStatusItem:item_];
}

/// The system may make another button once a custom view is gone.
std::shared_ptr<Button> MacStatusItem::button() {
    if (customView_) {
        return nullptr;
    }
    NSStatusBarButton* const native = [item_ button];
    if (button_ && button_->native() == native) {
        if (!tree_) {
            tree_ = std::make_unique<HostedTree>(button_, native, views_);
        }
        return button_;
    }
    tree_ = nullptr;
    button_ = native == nil ? nullptr : std::make_shared<MacStatusButton>(native);
    if (button_) {
        tree_ = std::make_unique<HostedTree>(button_, native, views_);
    }
    return button_;
}

void MacStatusItem::setCustomView(std::shared_ptr<View> view) {
    tree_ = nullptr;
    customView_ = std::move(view);
    if (customView_) {
        tree_ = std::make_unique<HostedTree>(customView_, views_);
    }
    setView(item_, tree_ ? tree_->native() : nil);
}

std::shared_ptr<StatusItem> MacStatusBar::statusItem(double length) {
    NSStatusItem* const item = [[NSStatusBar systemStatusBar] statusItemWithLength:length];
    return item == nil ? nullptr : std::make_shared<MacStatusItem>(item, views_);
}

double MacStatusBar::thickness() const { return [[NSStatusBar systemStatusBar] thickness]; }

} // namespace quillon
