#pragma once

#include <Foundation/NSString.h>

@interface NSOperationQueue : NSObject
- (void)addOperationWithBlock:(void (^)(void))block;
@property NSInteger maxConcurrentOperationCount;
@property(copy) NSString* name;
@property(class, readonly, strong) NSOperationQueue* mainQueue;
@end
