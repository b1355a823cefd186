#pragma once

#include <Foundation/NSError.h>

@interface NSURL : NSObject <NSSecureCoding, NSCopying>
- (instancetype)initWithString:(NSString*)URLString;
+ (instancetype)URLWithString:(NSString*)URLString;
+ (NSURL*)fileURLWithPath:(NSString*)path;
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDir;
@property(readonly, copy) NSString* absoluteString;
@property(readonly, copy) NSString* scheme;
@property(readonly, copy) NSString* host;
@property(readonly, copy) NSString* path;
@property(readonly, getter=isFileURL) BOOL fileURL;
@property(readonly) const char* fileSystemRepresentation __attribute__((objc_returns_inner_pointer))
;
@end
