#pragma once

#include <CoreFoundation/CFBase.h>

using CFArrayRef = const struct CF_BRIDGED_TYPE(NSArray) __CFArray*;

struct CFArrayCallBacks {
    CFIndex version;
    const void* (*retain)(CFAllocatorRef allocator, const void* value);
    void (*release)(CFAllocatorRef allocator, const void* value);
    CFStringRef (*copyDescription)(const void* value);
    Boolean (*equal)(const void* a, const void* b);
};

/// For values that are CFTypeRef.
CF_EXPORT const CFArrayCallBacks kCFTypeArrayCallBacks;

CF_EXPORT CFTypeID CFArrayGetTypeID();
CF_EXPORT CFArrayRef CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                                   const CFArrayCallBacks* callBacks);
CF_EXPORT CFIndex CFArrayGetCount(CFArrayRef array);
CF_EXPORT const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
