#include "Platform/MacOS/MacWindowServer.h"

#include "Platform/MacOS/CoreFoundationTypes.h"

#include <CoreGraphics/CoreGraphics.h>

namespace quillon {

namespace {

std::optional<Rect> rectIn(CFTypeRef value) {
    CGRect rect{};
    if (value == nullptr || CFGetTypeID(value) != CFDictionaryGetTypeID() ||
        !CGRectMakeWithDictionaryRepresentation(static_cast<CFDictionaryRef>(value), &rect)) {
        return std::nullopt;
    }
    return Rect{rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

WindowDescription describe(CFDictionaryRef window) {
    const auto said = [window](CFStringRef key) { return CFDictionaryGetValue(window, key); };
    return {
        .ownerProcess = integerIn(said(kCGWindowOwnerPID)),
        .ownerName = textIn(said(kCGWindowOwnerName)),
        .layer = integerIn(said(kCGWindowLayer)),
        .bounds = rectIn(said(kCGWindowBounds)),
        .isOnScreen = booleanIn(said(kCGWindowIsOnscreen)),
    };
}

} // namespace

std::optional<std::vector<WindowDescription>>
MacWindowServer::copyWindowList(WindowListOptions options) {
    const CfOwned list(
        CGWindowListCopyWindowInfo(static_cast<CGWindowListOption>(options), kCGNullWindowID));
    if (!list) {
        return std::nullopt;
    }
    std::vector<WindowDescription> windows;
    for (CFIndex i = 0; i < CFArrayGetCount(list.get()); ++i) {
        windows.push_back(
            describe(static_cast<CFDictionaryRef>(CFArrayGetValueAtIndex(list.get(), i))));
    }
    return windows;
}

} // namespace quillon
