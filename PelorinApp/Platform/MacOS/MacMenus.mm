#include "Platform/MacOS/MacMenus.h"

#include "Platform/MacOS/NativeText.h"

namespace quillon {

namespace {

NSControlStateValue nativeState(const MenuItem& item) {
    return item.hasCheckMark ? NSControlStateValueOn : NSControlStateValueOff;
}

} // namespace

MacMenus::~MacMenus() { letGo(); }

void MacMenus::popUpContextMenu(const std::shared_ptr<Menu>& menu, EventType /*event*/,
                                const View& view) {
    if (NSView* const native = views_.view(view)) {
        [NSMenu popUpContextMenu:take(menu)
                       withEvent:[[NSApplication sharedApplication] currentEvent]
                         forView:native];
    }
}

void MacMenus::popUp(const std::shared_ptr<Menu>& menu, Point location, const View& view) {
    if (NSView* const native = views_.view(view)) {
        [take(menu) popUpMenuPositioningItem:nil
                                  atLocation:NSMakePoint(location.x, location.y)
                                      inView:native];
    }
}

NSMenu* MacMenus::take(const std::shared_ptr<Menu>& menu) {
    letGo();
    shown_ = menu;
    NSMenu* const native = [[NSMenu alloc] initWithTitle:@""];
    [native setAutoenablesItems:NO]; // or the system would enable whatever has an action
    for (const auto& item : menu->items) {
        [native addItem:itemFor(item)];
    }
    return native;
}

NSMenuItem* MacMenus::itemFor(const std::shared_ptr<MenuItem>& shared) {
    MenuItem& item = *shared;
    if (item.isSeparator) {
        return [NSMenuItem separatorItem];
    }
    NSMenuItem* const native = [[NSMenuItem alloc] initWithTitle:nativeText(item.title)
                                                          action:nullptr
                                                   keyEquivalent:nativeText(item.keyEquivalent)];
    const Action action{item.action.name, [shared, native](Sender* sender) {
                            if (shared->action.perform) {
                                shared->action.perform(sender);
                            }
                            [native setState:nativeState(*shared)]; // which it may have changed
                        }};
    // One for each: several items may have actions of the same name.
    ActionTarget& target = *targets_.emplace_back(std::make_unique<ActionTarget>());
    [native setAction:target.selectorOf(action, item)];
    [native setTarget:target.object()];
    if (!item.keyEquivalent.empty()) {
        [native setKeyEquivalentModifierMask:NSEventModifierFlagCommand];
    }
    [native setImage:nil];
    [native setEnabled:item.isEnabled];
    [native setState:nativeState(item)];
    views_.add(item, native);
    return native;
}

void MacMenus::letGo() {
    if (shown_) {
        for (const auto& item : shown_->items) {
            views_.remove(*item);
        }
    }
    shown_ = nullptr;
    targets_.clear();
}

} // namespace quillon
