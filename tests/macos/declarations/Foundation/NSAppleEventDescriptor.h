#pragma once

#include <Foundation/NSString.h>

@interface NSAppleEventDescriptor : NSObject <NSCopying, NSSecureCoding>
@property(readonly, copy) NSString* stringValue;
@end
