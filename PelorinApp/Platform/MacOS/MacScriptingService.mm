#include "Platform/MacOS/MacScriptingService.h"

#include "Platform/MacOS/NSStrings.h"

#import <Foundation/Foundation.h>

#include <memory>

namespace quillon {

namespace {

class MacScript final : public Script {
  public:
    explicit MacScript(NSAppleScript* script) : script_(script) {}

    [[nodiscard]] std::optional<std::string> execute() override {
        @autoreleasepool {
            NSDictionary<NSString*, id>* error = nil;
            [script_ executeAndReturnError:&error];
            return error == nil ? std::nullopt : std::optional(utf8Text([error description]));
        }
    }

  private:
    NSAppleScript* script_;
};

} // namespace

std::unique_ptr<Script> MacScriptingService::compile(std::string_view source) {
    @autoreleasepool {
        NSString* text = nativeString(source);
        NSAppleScript* script = text == nil ? nil : [[NSAppleScript alloc] initWithSource:text];
        if (script == nil || ![script compileAndReturnError:nil]) {
            return nullptr;
        }
        return std::make_unique<MacScript>(script);
    }
}

} // namespace quillon
