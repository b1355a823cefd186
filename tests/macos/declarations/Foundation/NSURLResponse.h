#pragma once

#include <Foundation/NSURL.h>

@interface NSURLResponse : NSObject <NSSecureCoding, NSCopying>
@property(readonly, copy) NSURL* URL;
@property(readonly) long long expectedContentLength;
@end

@interface NSHTTPURLResponse : NSURLResponse
- (instancetype)initWithURL:(NSURL*)url
                 statusCode:(NSInteger)statusCode
                HTTPVersion:(NSString*)HTTPVersion
               headerFields:(NSDictionary<NSString*, NSString*>*)headerFields;
@property(readonly) NSInteger statusCode;
+ (NSString*)localizedStringForStatusCode:(NSInteger)statusCode;
@end
