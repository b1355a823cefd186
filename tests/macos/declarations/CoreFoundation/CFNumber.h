#pragma once

#include <CoreFoundation/CFBase.h>

using CFBooleanRef = const struct CF_BRIDGED_TYPE(NSNumber) __CFBoolean*;
using CFNumberRef = const struct CF_BRIDGED_TYPE(NSNumber) __CFNumber*;

typedef CF_ENUM(CFIndex, CFNumberType) {
    kCFNumberSInt32Type = 3,
    kCFNumberSInt64Type = 4,
    kCFNumberFloat64Type = 6,
    kCFNumberDoubleType = 13,
};

CF_EXPORT const CFBooleanRef kCFBooleanTrue;
CF_EXPORT const CFBooleanRef kCFBooleanFalse;

CF_EXPORT CFTypeID CFBooleanGetTypeID();
CF_EXPORT Boolean CFBooleanGetValue(CFBooleanRef boolean);

CF_EXPORT CFTypeID CFNumberGetTypeID();
CF_EXPORT CFNumberRef CFNumberCreate(CFAllocatorRef allocator, CFNumberType type,
                                     const void* value);

/// False when the number is not represented exactly by the type.
CF_EXPORT Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value);
