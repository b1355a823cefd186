#pragma once

#include <CoreFoundation/CFRunLoop.h>

using CFMachPortRef = struct __CFMachPort*;
using CFMachPortInvalidationCallBack = void (*)(CFMachPortRef port, void* info);

CF_EXPORT CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef allocator,
                                                           CFMachPortRef port, CFIndex order);

/// Takes the port's sources off every run loop, and calls the port's call-back.
CF_EXPORT void CFMachPortInvalidate(CFMachPortRef port);
CF_EXPORT Boolean CFMachPortIsValid(CFMachPortRef port);

/// Called once, on whichever thread the port becomes invalid; at once when it is already.
CF_EXPORT void CFMachPortSetInvalidationCallBack(CFMachPortRef port,
                                                 CFMachPortInvalidationCallBack callBack);
