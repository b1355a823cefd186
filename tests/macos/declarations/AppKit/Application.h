#pragma once

#include <AppKit/Applications.h>
#include <AppKit/Views.h>

@class NSApplication;

APPKIT_EXTERN __kindof NSApplication* NSApp;

@protocol NSApplicationDelegate <NSObject>
@optional
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag;
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (void)applicationDidBecomeActive:(NSNotification*)notification;
- (void)applicationWillTerminate:(NSNotification*)notification;
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
@property(weak) id<NSApplicationDelegate> delegate;
@property(readonly, strong) NSEvent* currentEvent;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy
    API_AVAILABLE(macos(10.6));
- (void)terminate:(id)sender;
@end
