#pragma once

#include <Foundation/Foundation.h>

@class SPUUpdater;

@protocol SPUUpdaterDelegate <NSObject>
@optional
- (NSString*)feedURLStringForUpdater:(SPUUpdater*)updater;
@end

@protocol SPUStandardUserDriverDelegate <NSObject>
@end

@interface SPUStandardUpdaterController : NSObject
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id<SPUUpdaterDelegate>)updaterDelegate
                     userDriverDelegate:(id<SPUStandardUserDriverDelegate>)userDriverDelegate;
@property(nonatomic, readonly) SPUUpdater* updater;
- (void)checkForUpdates:(id)sender;
@end
