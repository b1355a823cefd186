#pragma once

#include <Foundation/NSObject.h>
#include <Foundation/NSRange.h>

@interface NSData : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
@property(readonly) const void* bytes __attribute__((objc_returns_inner_pointer));
@end

@interface NSData (NSExtendedData)
- (BOOL)isEqualToData:(NSData*)other;
- (void)enumerateByteRangesUsingBlock:(void(NS_NOESCAPE ^)(const void* bytes, NSRange byteRange,
                                                           BOOL* stop))block;
@end

@interface NSData (NSDataCreation)
+ (instancetype)data;
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
@end

@interface NSMutableData : NSData
@property(readonly) void* mutableBytes __attribute__((objc_returns_inner_pointer));
- (void)appendBytes:(const void*)bytes length:(NSUInteger)length;
@end
