#pragma once

#include <Foundation/NSEnumerator.h>
#include <Foundation/NSObject.h>

@interface NSSet<__covariant ObjectType>
    : NSObject <NSCopying, NSMutableCopying, NSSecureCoding, NSFastEnumeration>
@property(readonly) NSUInteger count;
- (ObjectType)member:(ObjectType)object;
- (BOOL)containsObject:(ObjectType)anObject;
+ (instancetype)set;
+ (instancetype)setWithObject:(ObjectType)object;
@end
