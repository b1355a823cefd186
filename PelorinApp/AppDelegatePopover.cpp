// Clicks on the status item and elsewhere, and what they do to the popover.

#include "AppDelegate.h"

namespace quillon {

namespace {

/// The click that opens the popover is also a click outside of it, of which the monitor tells soon
/// after.
constexpr std::chrono::milliseconds openingClick{350};

} // namespace

void AppDelegate::statusBarButtonPressed(Sender* sender) {
    if (platform_.application.currentEvent() == EventType::rightMouseUp) {
        showContextMenu();
        return;
    }
    // Held here, since dismissing it lets go of it while it is still sending.
    const auto levelButton = volumeHUDBarButton_.lock();
    if (sender != nullptr && sender == levelButton.get()) {
        dismissVolumeLevelAtOnce();
        if (popover_ && popover_->isShown()) {
            return;
        }
        sender = nullptr; // it is gone; the restored button is the anchor
    }
    togglePopover(sender);
}

void AppDelegate::togglePopover(Sender* sender) {
    platform_.diagnostics.line("👆 Status bar item clicked!");
    const View* anchor = anchorView(sender);
    if (anchor == nullptr || !popover_) {
        return;
    }
    if (popover_->isShown()) {
        suppressOutsideClosePopoverUntil_.reset();
        popover_->close();
        listenForOutsideClicks(false);
        platform_.diagnostics.line("✖️ Popover closed");
    } else {
        showPopover(*anchor);
    }
}

void AppDelegate::showPopover(const View& anchor) {
    suppressOutsideClosePopoverUntil_ = platform_.runLoop.now() + openingClick;
    listenForOutsideClicks(true);
    popover_->show(anchor, RectEdge::minY);
    popover_->makeKeyWindow();
    platform_.diagnostics.line("✅ Popover opened");
}

void AppDelegate::applicationShouldHandleReopen() {
    if (!popover_) {
        return;
    }
    if (popover_->isShown()) {
        popover_->makeKeyWindow();
    } else if (const View* anchor = anchorView(nullptr)) {
        showPopover(*anchor);
    }
}

std::shared_ptr<View> AppDelegate::statusItemView() const {
    if (!statusBarItem_) {
        return nullptr;
    }
    if (auto button = statusBarItem_->button()) {
        return button;
    }
    return statusBarItem_->customView();
}

const View* AppDelegate::anchorView(Sender* sender) const {
    const auto* view = dynamic_cast<const View*>(sender);
    return view != nullptr && view->isInWindow() ? view : statusItemView().get();
}

void AppDelegate::closePopoverAfterOutsideClick() {
    if (!popover_ || !popover_->isShown()) {
        listenForOutsideClicks(false); // somebody has closed it otherwise
        return;
    }
    if (suppressOutsideClosePopoverUntil_) {
        // A clock that was set back meanwhile must not make the time longer.
        const auto left = *suppressOutsideClosePopoverUntil_ - platform_.runLoop.now();
        if (left > left.zero() && left <= openingClick) {
            return;
        }
    }
    if (pointerIsInStatusItem() || popover_->hasAttachedSheet()) {
        return;
    }
    popover_->close();
    listenForOutsideClicks(false);
}

/// While the popover is closed no click need wake the program.
void AppDelegate::listenForOutsideClicks(bool listen) {
    if (eventMonitor_) {
        platform_.monitors.setArmed(*eventMonitor_, listen);
    }
}

bool AppDelegate::pointerIsInStatusItem() const {
    if (!statusBarItem_) {
        return false;
    }
    const auto button = statusBarItem_->button();
    auto rect = button ? button->onScreen() : std::nullopt;
    if (!rect) {
        const auto view = statusBarItem_->customView();
        rect = view ? view->onScreen() : std::nullopt;
    }
    return rect && rect->contains(platform_.displays.mouseLocation());
}

} // namespace quillon
