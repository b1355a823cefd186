#pragma once

#include <CoreFoundation/CFBase.h>

using CFStringEncoding = UInt32;
typedef CF_ENUM(CFStringEncoding, CFStringBuiltInEncodings) {
    kCFStringEncodingUTF8 = 0x08000100,
};

CF_EXPORT CFTypeID CFStringGetTypeID();
CF_EXPORT CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes,
                                              CFIndex count, CFStringEncoding encoding,
                                              Boolean isExternalRepresentation);

CF_EXPORT CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator,
                                                   const UniChar* characters, CFIndex count);

/// In UTF-16 units.
CF_EXPORT CFIndex CFStringGetLength(CFStringRef string);

/// How many of the string's units were converted. `buffer` may be null, to learn the size.
CF_EXPORT CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                                   UInt8 lossByte, Boolean isExternalRepresentation, UInt8* buffer,
                                   CFIndex bufferSize, CFIndex* usedSize);
