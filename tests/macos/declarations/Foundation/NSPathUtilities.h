#pragma once

#include <Foundation/NSArray.h>
#include <Foundation/NSString.h>

typedef NS_ENUM(NSUInteger, NSSearchPathDirectory) {
    NSLibraryDirectory = 5,
    NSCachesDirectory = 13,
    NSApplicationSupportDirectory = 14,
};

typedef NS_OPTIONS(NSUInteger, NSSearchPathDomainMask) {
    NSUserDomainMask = 1,
    NSLocalDomainMask = 2,
};

FOUNDATION_EXPORT NSString* NSTemporaryDirectory(void);
FOUNDATION_EXPORT NSString* NSHomeDirectory(void);
FOUNDATION_EXPORT NSArray<NSString*>*
NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory directory,
                                    NSSearchPathDomainMask domainMask, BOOL expandTilde);
