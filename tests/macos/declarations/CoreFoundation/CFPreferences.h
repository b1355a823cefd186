#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFString.h>

CF_EXPORT const CFStringRef kCFPreferencesCurrentApplication;

CF_EXPORT Boolean CFPreferencesAppSynchronize(CFStringRef applicationID);
