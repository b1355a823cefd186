#pragma once

#include <CoreFoundation/CFBase.h>

using CFDictionaryRef = const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary*;

struct CFDictionaryKeyCallBacks {
    CFIndex version;
    const void* (*retain)(CFAllocatorRef allocator, const void* value);
    void (*release)(CFAllocatorRef allocator, const void* value);
    CFStringRef (*copyDescription)(const void* value);
    Boolean (*equal)(const void* a, const void* b);
    CFHashCode (*hash)(const void* value);
};
struct CFDictionaryValueCallBacks {
    CFIndex version;
    const void* (*retain)(CFAllocatorRef allocator, const void* value);
    void (*release)(CFAllocatorRef allocator, const void* value);
    CFStringRef (*copyDescription)(const void* value);
    Boolean (*equal)(const void* a, const void* b);
};

/// For keys and values that are CFTypeRef.
CF_EXPORT const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks;
CF_EXPORT const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks;

CF_EXPORT CFTypeID CFDictionaryGetTypeID();
CF_EXPORT CFDictionaryRef CFDictionaryCreate(CFAllocatorRef allocator, const void** keys,
                                             const void** values, CFIndex count,
                                             const CFDictionaryKeyCallBacks* keyCallBacks,
                                             const CFDictionaryValueCallBacks* valueCallBacks);
CF_EXPORT CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);

/// Null when there is no such key.
CF_EXPORT const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key);
