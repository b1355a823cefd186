#include "FakeDesktop.h"

#include "Foundation.h"

#include <AppKit/AppKit.h>

using quillon::fakes::arrayOf;
using quillon::fakes::FakeDesktop;
using quillon::fakes::fakeDesktop;
using quillon::fakes::stateOf;
using quillon::fakes::stringOf;
using quillon::fakes::utf8;

NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification =
    @"NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification";

@implementation NSScreen
+ (NSArray<NSScreen*>*)screens {
    std::vector<id> screens;
    for (const CGRect& frame : fakeDesktop().screens) {
        const id screen = [[NSScreen alloc] init];
        stateOf<CGRect>(screen) = frame;
        screens.push_back(screen);
    }
    return arrayOf(screens);
}
// The one with the window that is typed into: here the last, so that nobody takes it for the first.
+ (NSScreen*)mainScreen {
    return [[self screens] lastObject];
}
- (NSRect)frame {
    return stateOf<CGRect>(self);
}
@end

@implementation NSRunningApplication
+ (instancetype)runningApplicationWithProcessIdentifier:(int)process {
    for (const auto& app : fakeDesktop().apps) {
        if (app.process == process) {
            const id found = [[NSRunningApplication alloc] init];
            stateOf<FakeDesktop::App>(found) = app;
            return found;
        }
    }
    return nil;
}
- (int)processIdentifier {
    return stateOf<FakeDesktop::App>(self).process;
}
- (NSString*)localizedName {
    const auto& name = stateOf<FakeDesktop::App>(self).name;
    return name ? stringOf(*name) : nil;
}
- (NSApplicationActivationPolicy)activationPolicy {
    return (NSApplicationActivationPolicy)stateOf<FakeDesktop::App>(self).activationPolicy;
}
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options {
    fakeDesktop().activations.push_back({[self processIdentifier], options});
    return YES;
}
@end

@implementation NSOperationQueue
+ (NSOperationQueue*)mainQueue {
    static NSOperationQueue* const queue = [[NSOperationQueue alloc] init];
    return queue;
}
@end

@implementation NSWorkspace
+ (NSWorkspace*)sharedWorkspace {
    static NSWorkspace* const workspace = [[NSWorkspace alloc] init];
    return workspace;
}
- (NSNotificationCenter*)notificationCenter {
    static NSNotificationCenter* const center = [[NSNotificationCenter alloc] init];
    return center;
}
- (BOOL)openURL:(NSURL*)url {
    fakeDesktop().opened.push_back(utf8([url absoluteString]));
    return YES;
}
- (NSRunningApplication*)frontmostApplication {
    const auto& frontmost = fakeDesktop().frontmost;
    return frontmost ? [NSRunningApplication runningApplicationWithProcessIdentifier:*frontmost]
                     : nil;
}
- (BOOL)accessibilityDisplayShouldReduceMotion {
    return fakeDesktop().reducesMotion;
}
- (BOOL)accessibilityDisplayShouldIncreaseContrast {
    return fakeDesktop().increasesContrast;
}
@end

namespace quillon::fakes {

void FakeDesktop::changeDisplayOptions(bool reduceMotion, bool increaseContrast) {
    reducesMotion = reduceMotion;
    increasesContrast = increaseContrast;
    [[[NSWorkspace sharedWorkspace] notificationCenter]
        postNotificationName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                      object:[NSWorkspace sharedWorkspace]];
}

FakeDesktop& fakeDesktop() {
    static FakeDesktop desktop;
    return desktop;
}

} // namespace quillon::fakes
