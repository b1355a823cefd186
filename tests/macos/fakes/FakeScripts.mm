#include "FakeScripts.h"

#include "Foundation.h"

using quillon::fakes::fakeScripts;
using quillon::fakes::stateOf;
using quillon::fakes::stringOf;
using quillon::fakes::utf8;

NSString* const NSAppleScriptErrorMessage = @"NSAppleScriptErrorMessage";
NSString* const NSAppleScriptErrorNumber = @"NSAppleScriptErrorNumber";
NSString* const NSAppleScriptErrorAppName = @"NSAppleScriptErrorAppName";
NSString* const NSAppleScriptErrorBriefMessage = @"NSAppleScriptErrorBriefMessage";
NSString* const NSAppleScriptErrorRange = @"NSAppleScriptErrorRange";

namespace {

struct Source {
    std::string text;
};

NSDictionary* errorInfo(const std::string& message) {
    return [NSDictionary dictionaryWithObject:stringOf(message) forKey:NSAppleScriptErrorMessage];
}

} // namespace

@implementation NSAppleEventDescriptor
@end

@implementation NSAppleScript
- (instancetype)initWithSource:(NSString*)source {
    fakeScripts().sources.push_back(utf8(source));
    if (!fakeScripts().makesScripts)
        return nil;
    stateOf<Source>(self).text = utf8(source);
    return self;
}
- (BOOL)compileAndReturnError:(NSDictionary<NSString*, id>**)error {
    if (!fakeScripts().compiles && error)
        *error = errorInfo("It does not compile.");
    return fakeScripts().compiles;
}
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>**)error {
    fakeScripts().executed.push_back(stateOf<Source>(self).text);
    if (fakeScripts().failure) {
        if (error)
            *error = errorInfo(*fakeScripts().failure);
        return nil;
    }
    return [[NSAppleEventDescriptor alloc] init];
}
@end

namespace quillon::fakes {

FakeScripts& fakeScripts() {
    static FakeScripts scripts;
    return scripts;
}

} // namespace quillon::fakes
