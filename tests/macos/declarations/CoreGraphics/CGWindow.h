#pragma once

#include <CoreFoundation/CoreFoundation.h>

using CGWindowID = std::uint32_t;
enum : CGWindowID { kCGNullWindowID = 0 };

typedef CF_OPTIONS(std::uint32_t, CGWindowListOption) {
    kCGWindowListOptionAll = 0,
    kCGWindowListOptionOnScreenOnly = 1U << 0U,
    kCGWindowListExcludeDesktopElements = 1U << 4U,
};

/// Keys of what the list says of a window.
CF_EXPORT const CFStringRef kCGWindowOwnerPID;   // CFNumber, 32 bits
CF_EXPORT const CFStringRef kCGWindowOwnerName;  // CFString
CF_EXPORT const CFStringRef kCGWindowLayer;      // CFNumber, 32 bits
CF_EXPORT const CFStringRef kCGWindowBounds;     // CFDictionary of a CGRect
CF_EXPORT const CFStringRef kCGWindowIsOnscreen; // CFBoolean

/// Dictionaries, front to back; null where there is no window server.
CF_EXPORT CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option,
                                                CGWindowID relativeToWindow) CF_RETURNS_RETAINED;
