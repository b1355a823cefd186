#include "Platform/MacOS/MacAccessibility.h"

#include "Platform/MacOS/CoreFoundationTypes.h"

#include <ApplicationServices/ApplicationServices.h>

namespace quillon {

bool MacAccessibility::isProcessTrusted() {
    const void* key = kAXTrustedCheckOptionPrompt;
    const void* value = kCFBooleanFalse;
    const CfOwned options(CFDictionaryCreate(kCFAllocatorDefault, &key, &value, 1,
                                             &kCFTypeDictionaryKeyCallBacks,
                                             &kCFTypeDictionaryValueCallBacks));
    return AXIsProcessTrustedWithOptions(options.get()) != 0;
}

} // namespace quillon
