#pragma once

#include "Platform/Button.h"

#include <AppKit/AppKit.h>

#include <string_view>

namespace quillon {

// What buttons and texts look like, in the system's own terms.

[[nodiscard]] NSFont* nativeFont(const Font& font);
[[nodiscard]] NSTextAlignment nativeAlignment(TextAlignment alignment);
[[nodiscard]] NSImageScaling nativeScaling(ImageScaling scaling);
[[nodiscard]] NSCellImagePosition nativePosition(ImagePosition position);

/// A colour of the system by the name that it has there, such as "labelColor"; nil when there is
/// none of this name.
[[nodiscard]] NSColor* nativeColor(std::string_view name);

/// A picture as it is described; nil when there is none.
[[nodiscard]] NSImage* nativeImage(const Image& image);

[[nodiscard]] inline NSRect nativeRect(const Rect& rect) {
    return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}
[[nodiscard]] inline Rect rectOf(NSRect rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

} // namespace quillon
