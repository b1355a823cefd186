#include "FakeMenus.h"

using namespace quillon::fakes;

namespace {

void show(NSMenu* menu, NSView* view) {
    FakeMenus& menus = fakeMenus();
    menus.shown = menu;
    menus.view = view;
    ++menus.timesShown;
    if (menus.whileShown)
        menus.whileShown();
}

} // namespace

@implementation NSMenu
- (instancetype)initWithTitle:(NSString*)title {
    (void)title;
    return [super init];
}
+ (void)popUpContextMenu:(NSMenu*)menu withEvent:(NSEvent*)event forView:(NSView*)view {
    fakeMenus().event = event;
    fakeMenus().isContextMenu = true;
    show(menu, view);
}
- (BOOL)popUpMenuPositioningItem:(NSMenuItem*)item
                      atLocation:(NSPoint)location
                          inView:(NSView*)view {
    fakeMenus().positioned = item;
    fakeMenus().location = location;
    fakeMenus().isContextMenu = false;
    show(self, view);
    return YES;
}
- (void)addItem:(NSMenuItem*)item {
    fakeMenu(self).items.push_back(item);
}
- (NSArray*)itemArray {
    const auto& items = fakeMenu(self).items;
    return arrayOf({items.begin(), items.end()});
}
- (BOOL)autoenablesItems {
    return fakeMenu(self).autoenablesItems;
}
- (void)setAutoenablesItems:(BOOL)enables {
    fakeMenu(self).autoenablesItems = enables;
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}
- (void)encodeWithCoder:(NSCoder*)coder {
    (void)coder;
}
- (instancetype)initWithCoder:(NSCoder*)coder {
    (void)coder;
    return nil;
}
@end

@implementation NSMenuItem
+ (NSMenuItem*)separatorItem {
    NSMenuItem* item = [[NSMenuItem alloc] init];
    fakeMenuItem(item).isSeparator = true;
    return item;
}
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
    self = [super init];
    FakeMenuItem& state = fakeMenuItem(self);
    state.title = title;
    state.action = action;
    state.keyEquivalent = key;
    return self;
}
- (BOOL)isSeparatorItem {
    return fakeMenuItem(self).isSeparator;
}
- (NSString*)title {
    return fakeMenuItem(self).title;
}
- (void)setTitle:(NSString*)title {
    fakeMenuItem(self).title = title;
}
- (NSString*)keyEquivalent {
    return fakeMenuItem(self).keyEquivalent;
}
- (void)setKeyEquivalent:(NSString*)key {
    fakeMenuItem(self).keyEquivalent = key;
}
- (NSEventModifierFlags)keyEquivalentModifierMask {
    return fakeMenuItem(self).modifiers;
}
- (void)setKeyEquivalentModifierMask:(NSEventModifierFlags)mask {
    fakeMenuItem(self).modifiers = mask;
    ++fakeMenuItem(self).timesModifiersSet;
}
- (NSImage*)image {
    return fakeMenuItem(self).image;
}
- (void)setImage:(NSImage*)image {
    fakeMenuItem(self).image = image;
    ++fakeMenuItem(self).timesImageSet;
}
- (NSControlStateValue)state {
    return fakeMenuItem(self).state;
}
- (void)setState:(NSControlStateValue)state {
    fakeMenuItem(self).state = state;
}
- (BOOL)isEnabled {
    return fakeMenuItem(self).isEnabled;
}
- (void)setEnabled:(BOOL)enabled {
    fakeMenuItem(self).isEnabled = enabled;
}
- (id)target {
    return fakeMenuItem(self).target;
}
- (void)setTarget:(id)target {
    fakeMenuItem(self).target = target;
}
- (SEL)action {
    return fakeMenuItem(self).action;
}
- (void)setAction:(SEL)action {
    fakeMenuItem(self).action = action;
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}
- (void)encodeWithCoder:(NSCoder*)coder {
    (void)coder;
}
- (instancetype)initWithCoder:(NSCoder*)coder {
    (void)coder;
    return nil;
}
@end

namespace quillon::fakes {

FakeMenus& fakeMenus() {
    static FakeMenus menus;
    return menus;
}

bool choose(NSMenuItem* item) {
    const FakeMenuItem& state = fakeMenuItem(item);
    // A menu that enables its items by itself asks only whether their target has the action.
    const bool isEnabled = fakeMenus().shown && fakeMenu(fakeMenus().shown).autoenablesItems
                               ? [state.target respondsToSelector:state.action]
                               : state.isEnabled;
    if (state.isSeparator || !isEnabled || !state.target || !state.action)
        return false;
    [state.target performSelector:state.action withObject:item];
    return true;
}

} // namespace quillon::fakes
