#pragma once

#include <Foundation/NSObject.h>
#include <Foundation/NSRange.h>

@class NSArray<ObjectType>;
@class NSData;

typedef unsigned short unichar;

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding {
    NSASCIIStringEncoding = 1,
    NSUTF8StringEncoding = 4,
    NSISOLatin1StringEncoding = 5,
    NSUTF16StringEncoding = 10,
};

typedef NS_OPTIONS(NSUInteger, NSStringCompareOptions) {
    NSCaseInsensitiveSearch = 1,
    NSLiteralSearch = 2,
    NSBackwardsSearch = 4,
};

@interface NSString : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
- (unichar)characterAtIndex:(NSUInteger)index;
- (instancetype)init;
@end

@interface NSString (NSStringExtensionMethods)
- (NSString*)substringFromIndex:(NSUInteger)from;
- (NSString*)substringToIndex:(NSUInteger)to;
- (NSString*)substringWithRange:(NSRange)range;
- (NSComparisonResult)compare:(NSString*)string;
- (NSComparisonResult)caseInsensitiveCompare:(NSString*)string;
- (BOOL)isEqualToString:(NSString*)aString;
- (BOOL)hasPrefix:(NSString*)str;
- (BOOL)hasSuffix:(NSString*)str;
- (BOOL)containsString:(NSString*)str;
- (NSRange)rangeOfString:(NSString*)searchString;
- (NSString*)stringByAppendingString:(NSString*)aString;
- (NSArray<NSString*>*)componentsSeparatedByString:(NSString*)separator;
@property(readonly) double doubleValue;
@property(readonly) int intValue;
@property(readonly) NSInteger integerValue;
@property(readonly) BOOL boolValue;
@property(readonly, copy) NSString* lowercaseString;
@property(readonly, copy) NSString* uppercaseString;
@property(readonly) const char* UTF8String __attribute__((objc_returns_inner_pointer));
- (const char*)cStringUsingEncoding:(NSStringEncoding)encoding
    __attribute__((objc_returns_inner_pointer));
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)enc;
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
- (instancetype)initWithUTF8String:(const char*)nullTerminatedCString;
- (instancetype)initWithString:(NSString*)aString;
- (instancetype)initWithFormat:(NSString*)format, ... __attribute__((format(__NSString__, 1, 2)));
- (instancetype)initWithData:(NSData*)data encoding:(NSStringEncoding)encoding;
- (instancetype)initWithBytes:(const void*)bytes
                       length:(NSUInteger)len
                     encoding:(NSStringEncoding)encoding;
+ (instancetype)string;
+ (instancetype)stringWithString:(NSString*)string;
+ (instancetype)stringWithUTF8String:(const char*)nullTerminatedCString;
+ (instancetype)stringWithFormat:(NSString*)format, ... __attribute__((format(__NSString__, 1, 2)));
@end

@interface NSMutableString : NSString
- (void)replaceCharactersInRange:(NSRange)range withString:(NSString*)aString;
@end

@interface NSMutableString (NSMutableStringExtensionMethods)
- (void)appendString:(NSString*)aString;
@end

// The classes of constant strings, whose layout the compiler knows.
@interface NSSimpleCString : NSString {
  @protected
    char* bytes;
    int numBytes;
    int _unused;
}
@end

@interface NSConstantString : NSSimpleCString
@end
