#pragma once

#include <AppKit/Text.h>

typedef NSString* NSImageName;

@interface NSImage : NSObject <NSCopying, NSSecureCoding>
+ (NSImage*)imageNamed:(NSImageName)name;
+ (instancetype)imageWithSystemSymbolName:(NSString*)symbolName
                 accessibilityDescription:(NSString*)description API_AVAILABLE(macos(11.0));
@property NSSize size;
// A property of a name that C++ does not allow.
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)isTemplate;
@property(copy) NSString* accessibilityDescription;
@end
