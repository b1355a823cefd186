#pragma once

#include <Foundation/NSDate.h>

@interface NSTimer : NSObject
+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer* timer))block;
+ (NSTimer*)scheduledTimerWithTimeInterval:(NSTimeInterval)interval
                                   repeats:(BOOL)repeats
                                     block:(void (^)(NSTimer* timer))block;
- (void)fire;
@property(readonly) NSTimeInterval timeInterval;
@property NSTimeInterval tolerance;
- (void)invalidate;
@property(readonly, getter=isValid) BOOL valid;
@end
