#include "Platform/MacOS/MacApplication.h"

#include <AppKit/AppKit.h>

#include <utility>

/// Hands on what the system tells to a delegate of ours.
@interface QuillonApplicationDelegate : NSObject <NSApplicationDelegate> {
  @public
    const std::weak_ptr<quillon::ApplicationDelegate>* delegate; // null: gone
    bool isEnding;
}
- (void)willTerminate;
@end

@implementation QuillonApplicationDelegate

- (std::shared_ptr<quillon::ApplicationDelegate>)told {
    return delegate == nullptr ? nullptr : delegate->lock();
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    if (const auto told = [self told]) {
        told->applicationDidFinishLaunching();
    }
}

- (void)applicationDidBecomeActive:(NSNotification*)notification {
    (void)notification;
    if (const auto told = [self told]) {
        told->applicationDidBecomeActive();
    }
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
    (void)sender;
    const auto told = [self told];
    return told && told->applicationShouldTerminateAfterLastWindowClosed();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag {
    (void)sender;
    (void)flag;
    if (const auto told = [self told]) {
        told->applicationShouldHandleReopen();
    }
    return NO; // nothing is left for the system to do
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    (void)notification;
    [self willTerminate];
}

- (void)willTerminate {
    if (std::exchange(isEnding, true)) {
        return;
    }
    if (const auto told = [self told]) {
        told->applicationWillTerminate();
    }
}

@end

namespace quillon {

MacApplication::MacApplication(const NativeViews& views) : views_(views) {
    QuillonApplicationDelegate* const listener = [[QuillonApplicationDelegate alloc] init];
    listener->delegate = &delegate_;
    listener_ = listener;
    [[NSApplication sharedApplication] setDelegate:listener];
}

MacApplication::~MacApplication() {
    static_cast<QuillonApplicationDelegate*>(listener_)->delegate = nullptr;
}

void MacApplication::setDelegate(std::weak_ptr<ApplicationDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void MacApplication::setActivationPolicy(ActivationPolicy policy) {
    const auto native = [policy] {
        switch (policy) {
        case ActivationPolicy::regular:
            break;
        case ActivationPolicy::accessory:
            return NSApplicationActivationPolicyAccessory;
        case ActivationPolicy::prohibited:
            return NSApplicationActivationPolicyProhibited;
        }
        return NSApplicationActivationPolicyRegular;
    }();
    [[NSApplication sharedApplication] setActivationPolicy:native];
}

std::optional<EventType> MacApplication::currentEvent() const {
    NSEvent* const event = [[NSApplication sharedApplication] currentEvent];
    return event == nil ? std::nullopt : std::optional(static_cast<EventType>([event type]));
}

/// The toolkit has the system wait, and ends its event loop instead once this has returned.
void MacApplication::terminate(Sender* sender) {
    [[NSApplication sharedApplication] terminate:views_.nativeSender(sender)];
}

void MacApplication::willTerminate() {
    [static_cast<QuillonApplicationDelegate*>(listener_) willTerminate];
}

} // namespace quillon
