#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>

#include <sys/types.h>

using AXUIElementRef = const struct __AXUIElement*;

typedef CF_ENUM(SInt32, AXError) {
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorActionUnsupported = -25206,
};

/// A key of AXIsProcessTrustedWithOptions: CFBoolean, whether the user is to be asked.
CF_EXPORT const CFStringRef kAXTrustedCheckOptionPrompt;

CF_EXPORT Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options);

CF_EXPORT CFTypeID AXUIElementGetTypeID();
CF_EXPORT AXUIElementRef AXUIElementCreateApplication(pid_t process) CF_RETURNS_RETAINED;
CF_EXPORT AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                                CFTypeRef* value);
CF_EXPORT AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                               CFTypeRef value);
CF_EXPORT AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);

/// How long a call on the element waits for the application; 0 is the system's own 6 seconds.
CF_EXPORT AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds);
