#pragma once

#include <CoreFoundation/CFBase.h>

using CFRunLoopMode = CFStringRef;
using CFRunLoopRef = struct __CFRunLoop*;
using CFRunLoopSourceRef = struct __CFRunLoopSource*;

CF_EXPORT const CFRunLoopMode kCFRunLoopDefaultMode;
CF_EXPORT const CFRunLoopMode kCFRunLoopCommonModes;

CF_EXPORT CFRunLoopRef CFRunLoopGetMain();
CF_EXPORT void CFRunLoopAddSource(CFRunLoopRef runLoop, CFRunLoopSourceRef source,
                                  CFRunLoopMode mode);
CF_EXPORT void CFRunLoopRemoveSource(CFRunLoopRef runLoop, CFRunLoopSourceRef source,
                                     CFRunLoopMode mode);
