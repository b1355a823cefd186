#include "Platform/MacOS/MacUpdaters.h"

#include "Platform/MacOS/NSStrings.h"
#include "Platform/MacOS/NativeViews.h"

#import <Foundation/Foundation.h>
#import <Sparkle/Sparkle.h>

#include <utility>

/// Passes the framework's questions on.
@interface QuillonUpdaterDelegate : NSObject <SPUUpdaterDelegate> {
    std::weak_ptr<quillon::UpdaterDelegate> delegate_;
}
- (instancetype)initWithDelegate:(std::weak_ptr<quillon::UpdaterDelegate>)delegate;
@end

@implementation QuillonUpdaterDelegate

- (instancetype)initWithDelegate:(std::weak_ptr<quillon::UpdaterDelegate>)delegate {
    self = [super init];
    if (self != nil) {
        delegate_ = std::move(delegate);
    }
    return self;
}

- (NSString*)feedURLStringForUpdater:(SPUUpdater*)updater {
    (void)updater;
    const auto delegate = delegate_.lock();
    const auto address = delegate ? delegate->feedURLStringForUpdater() : std::nullopt;
    return address ? quillon::nativeString(*address) : nil;
}

@end

namespace quillon {

namespace {

class MacUpdaterController final : public UpdaterController {
  public:
    MacUpdaterController(const NativeViews& views, bool startingUpdater,
                         std::weak_ptr<UpdaterDelegate> delegate)
        : views_(views),
          delegate_([[QuillonUpdaterDelegate alloc] initWithDelegate:std::move(delegate)]),
          controller_([[SPUStandardUpdaterController alloc] initWithStartingUpdater:startingUpdater
                                                                    updaterDelegate:delegate_
                                                                 userDriverDelegate:nil]) {}

    void checkForUpdates(Sender* sender) override {
        [controller_ checkForUpdates:views_.nativeSender(sender)];
    }

  private:
    const NativeViews& views_;
    QuillonUpdaterDelegate* delegate_; // the controller does not keep it
    SPUStandardUpdaterController* controller_;
};

} // namespace

std::unique_ptr<UpdaterController>
MacUpdaters::makeController(bool startingUpdater, std::weak_ptr<UpdaterDelegate> delegate) {
    return std::make_unique<MacUpdaterController>(views_, startingUpdater, std::move(delegate));
}

} // namespace quillon
