#pragma once

#include <Foundation/NSObject.h>

typedef double NSTimeInterval;

@interface NSDate : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSTimeInterval timeIntervalSinceReferenceDate;
@end

@interface NSDate (NSExtendedDate)
@property(readonly) NSTimeInterval timeIntervalSinceNow;
@property(readonly) NSTimeInterval timeIntervalSince1970;
@end

@interface NSDate (NSDateCreation)
+ (instancetype)date;
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)secs;
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)secs;
@end
