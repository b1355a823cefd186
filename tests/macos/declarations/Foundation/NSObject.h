#pragma once

#include <Foundation/NSObjCRuntime.h>
#include <objc/NSObject.h>

@protocol NSCopying
- (id)copyWithZone:(NSZone*)zone;
@end

@protocol NSMutableCopying
- (id)mutableCopyWithZone:(NSZone*)zone;
@end

@class NSCoder;

@protocol NSCoding
- (void)encodeWithCoder:(NSCoder*)coder;
- (instancetype)initWithCoder:(NSCoder*)coder;
@end

@protocol NSSecureCoding <NSCoding>
@property(class, readonly) BOOL supportsSecureCoding;
@end

@interface NSObject (NSDelayedPerforming)
- (void)performSelectorOnMainThread:(SEL)aSelector withObject:(id)arg waitUntilDone:(BOOL)wait;
@end
