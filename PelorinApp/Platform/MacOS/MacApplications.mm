#include "Platform/MacOS/MacApplications.h"

#include "Platform/MacOS/NSStrings.h"

#import <AppKit/AppKit.h>

#include <memory>

namespace quillon {

namespace {

class MacRunningApplication final : public RunningApplication {
  public:
    explicit MacRunningApplication(NSRunningApplication* application) : application_(application) {}

    [[nodiscard]] ProcessId processIdentifier() const override {
        return [application_ processIdentifier];
    }

    [[nodiscard]] std::optional<std::string> localizedName() const override {
        NSString* name = [application_ localizedName];
        return name == nil ? std::nullopt : std::optional(utf8Text(name));
    }

    [[nodiscard]] ActivationPolicy activationPolicy() const override {
        switch ([application_ activationPolicy]) {
        case NSApplicationActivationPolicyRegular:
            return ActivationPolicy::regular;
        case NSApplicationActivationPolicyAccessory:
            return ActivationPolicy::accessory;
        case NSApplicationActivationPolicyProhibited:
            break;
        }
        return ActivationPolicy::prohibited;
    }

    void activate(ActivationOptions options) override {
        [application_ activateWithOptions:static_cast<NSApplicationActivationOptions>(options)];
    }

  private:
    NSRunningApplication* application_;
};

RunningApplicationRef reference(NSRunningApplication* application) {
    return application == nil ? nullptr : std::make_shared<MacRunningApplication>(application);
}

} // namespace

RunningApplicationRef MacApplications::frontmostApplication() {
    return reference([[NSWorkspace sharedWorkspace] frontmostApplication]);
}

RunningApplicationRef MacApplications::runningApplication(ProcessId process) {
    return reference([NSRunningApplication runningApplicationWithProcessIdentifier:process]);
}

} // namespace quillon
