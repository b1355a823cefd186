#pragma once

#include <objc/NSObjCRuntime.h>
#include <objc/objc.h>
#include <os/availability.h>

#ifdef __cplusplus
#define FOUNDATION_EXPORT extern "C"
#else
#define FOUNDATION_EXPORT extern
#endif

#define NS_NOESCAPE __attribute__((noescape))
#define NS_ENUM(type, name)                                                                        \
    enum name : type name;                                                                         \
    enum name : type
#define NS_OPTIONS(type, name)                                                                     \
    type name;                                                                                     \
    enum : type

typedef NS_ENUM(NSInteger, NSComparisonResult) {
    NSOrderedAscending = -1L,
    NSOrderedSame,
    NSOrderedDescending
};

static const NSInteger NSNotFound = NSIntegerMax;

@class NSString;

FOUNDATION_EXPORT NSString* NSStringFromSelector(SEL aSelector);
FOUNDATION_EXPORT SEL NSSelectorFromString(NSString* aSelectorName);
FOUNDATION_EXPORT NSString* NSStringFromClass(Class aClass);
FOUNDATION_EXPORT Class NSClassFromString(NSString* aClassName);
FOUNDATION_EXPORT void NSLog(NSString* format, ...) __attribute__((format(__NSString__, 1, 2)));
