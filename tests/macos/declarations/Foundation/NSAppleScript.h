#pragma once

#include <Foundation/NSURL.h>

@class NSAppleEventDescriptor;

FOUNDATION_EXPORT NSString* const NSAppleScriptErrorMessage;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorNumber;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorAppName;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorBriefMessage;
FOUNDATION_EXPORT NSString* const NSAppleScriptErrorRange;

@interface NSAppleScript : NSObject <NSCopying>
- (instancetype)initWithSource:(NSString*)source;
@property(readonly, copy) NSString* source;
@property(readonly, getter=isCompiled) BOOL compiled;
- (BOOL)compileAndReturnError:(NSDictionary<NSString*, id>**)errorInfo;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>**)errorInfo;
@end
