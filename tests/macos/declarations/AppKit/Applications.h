#pragma once

#include <Foundation/Foundation.h>

typedef NS_OPTIONS(NSUInteger, NSApplicationActivationOptions) {
    NSApplicationActivateAllWindows = 1 << 0,
    NSApplicationActivateIgnoringOtherApps = 1 << 1,
};

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular,
    NSApplicationActivationPolicyAccessory,
    NSApplicationActivationPolicyProhibited,
};

@interface NSRunningApplication : NSObject
@property(readonly, getter=isTerminated) BOOL terminated;
@property(readonly, getter=isActive) BOOL active;
@property(readonly) NSApplicationActivationPolicy activationPolicy;
@property(readonly, copy) NSString* localizedName;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly) int processIdentifier;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
+ (instancetype)runningApplicationWithProcessIdentifier:(int)pid;
@property(class, readonly, strong) NSRunningApplication* currentApplication;
@end

FOUNDATION_EXPORT NSNotificationName const
    NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
- (BOOL)openURL:(NSURL*)url;
@end

@interface NSWorkspace (NSWorkspaceRunningApplications)
@property(readonly, strong) NSRunningApplication* frontmostApplication;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
@end

@interface NSWorkspace (NSWorkspaceAccessibilityDisplay)
@property(readonly) BOOL accessibilityDisplayShouldIncreaseContrast;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
@end
