#pragma once

#include <Foundation/Foundation.h>
#include <QuartzCore/QuartzCore.h>

@interface NSAnimationContext : NSObject
+ (void)runAnimationGroup:(void(NS_NOESCAPE ^)(NSAnimationContext* context))changes
        completionHandler:(void (^)(void))completionHandler API_AVAILABLE(macos(10.7));
+ (void)beginGrouping;
+ (void)endGrouping;
@property(class, readonly, strong) NSAnimationContext* currentContext;
@property NSTimeInterval duration;
@property(strong) CAMediaTimingFunction* timingFunction;
@property BOOL allowsImplicitAnimation;
@end
