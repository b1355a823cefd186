#pragma once

#include <Foundation/NSURL.h>

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSString* bundlePath;
@property(readonly, copy) NSURL* resourceURL;
@property(readonly, copy) NSString* resourcePath;
@property(readonly, copy) NSDictionary<NSString*, id>* infoDictionary;
- (id)objectForInfoDictionaryKey:(NSString*)key;
- (NSURL*)URLForResource:(NSString*)name withExtension:(NSString*)ext;
- (NSString*)pathForResource:(NSString*)name ofType:(NSString*)ext;
@end
