#include "Platform/MacOS/MacWorkspace.h"

#include "Platform/MacOS/NSStrings.h"
#include "Platform/MacOS/SharedHandler.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace quillon {

/// Follows the display options for as long as it lives.
class MacWorkspace::Observation {
  public:
    explicit Observation(std::function<void()> changed) {
        const SharedHandler<> handler(std::move(changed)); // which may set another one
        token_ =
            [center() addObserverForName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                                  object:nil
                                   queue:[NSOperationQueue mainQueue]
                              usingBlock:^(NSNotification* /*notification*/) {
                                handler();
                              }];
    }
    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;
    ~Observation() { [center() removeObserver:token_]; }

  private:
    static NSNotificationCenter* center() {
        return [[NSWorkspace sharedWorkspace] notificationCenter];
    }

    id token_;
};

MacWorkspace::MacWorkspace() = default;
MacWorkspace::~MacWorkspace() = default;

void MacWorkspace::open(std::string_view url) {
    @autoreleasepool {
        NSString* text = nativeString(url);
        NSURL* address = text == nil ? nil : [NSURL URLWithString:text];
        if (address != nil) {
            [[NSWorkspace sharedWorkspace] openURL:address];
        }
    }
}

DisplayOptions MacWorkspace::displayOptions() const {
    NSWorkspace* workspace = [NSWorkspace sharedWorkspace];
    return {.shouldReduceMotion = [workspace accessibilityDisplayShouldReduceMotion] != NO,
            .shouldIncreaseContrast = [workspace accessibilityDisplayShouldIncreaseContrast] != NO};
}

void MacWorkspace::setDisplayOptionsHandler(std::function<void()> changed) {
    observation_ = changed ? std::make_unique<Observation>(std::move(changed)) : nullptr;
}

} // namespace quillon
