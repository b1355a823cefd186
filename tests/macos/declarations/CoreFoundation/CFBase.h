#pragma once

#include <cstddef>
#include <cstdint>

#define CF_EXPORT extern "C"
#define CF_ENUM(Type, Name)                                                                        \
    enum Name : Type Name;                                                                         \
    enum Name : Type
#define CF_OPTIONS(Type, Name) CF_ENUM(Type, Name)

// The type of Objective-C objects that a structure is interchangeable with.
#if __has_attribute(objc_bridge)
#define CF_BRIDGED_TYPE(Type) __attribute__((objc_bridge(Type)))
#else
#define CF_BRIDGED_TYPE(Type)
#endif

// Without automatic reference counting the attributes on results say nothing to the compiler.
#if __has_attribute(cf_returns_retained)
#define CF_RETURNS_RETAINED __attribute__((cf_returns_retained))
#define CF_RETURNS_NOT_RETAINED __attribute__((cf_returns_not_retained))
#else
#define CF_RETURNS_RETAINED
#define CF_RETURNS_NOT_RETAINED
#endif

using Boolean = unsigned char;
using UInt8 = std::uint8_t;
using SInt16 = std::int16_t;
using UInt16 = std::uint16_t;
using SInt32 = std::int32_t;
using UInt32 = std::uint32_t;
using OSStatus = SInt32;
using FourCharCode = UInt32;
using UniChar = UInt16;

using CFIndex = long;
using CFTypeID = unsigned long;
using CFOptionFlags = unsigned long;
using CFHashCode = unsigned long;
using CFTypeRef = const void*;
using CFStringRef = const struct CF_BRIDGED_TYPE(NSString) __CFString*;
using CFAllocatorRef = const struct __CFAllocator*;

struct CFRange {
    CFIndex location;
    CFIndex length;
};
inline CFRange CFRangeMake(CFIndex location, CFIndex length) { return {location, length}; }

CF_EXPORT const CFAllocatorRef kCFAllocatorDefault;

CF_EXPORT CFTypeRef CFRetain(CFTypeRef object);
CF_EXPORT void CFRelease(CFTypeRef object);
CF_EXPORT CFTypeID CFGetTypeID(CFTypeRef object);
CF_EXPORT Boolean CFEqual(CFTypeRef a, CFTypeRef b);
