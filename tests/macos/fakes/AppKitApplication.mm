#include "FakeApplication.h"

using namespace quillon::fakes;

__kindof NSApplication* NSApp = nil;

@implementation NSApplication
+ (NSApplication*)sharedApplication {
    if (!NSApp)
        NSApp = [[NSApplication alloc] init];
    return NSApp;
}
- (id<NSApplicationDelegate>)delegate {
    return fakeApplication().delegate;
}
- (void)setDelegate:(id<NSApplicationDelegate>)delegate {
    fakeApplication().delegate = delegate;
}
- (NSEvent*)currentEvent {
    return fakeApplication().currentEvent;
}
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    fakeApplication().policy = policy;
    return YES;
}
- (void)terminate:(id)sender {
    fakeApplication().terminations.push_back(sender);
}
@end

namespace quillon::fakes {

FakeApplication& fakeApplication() {
    static FakeApplication application;
    return application;
}

} // namespace quillon::fakes
