#include "Platform/MacOS/MacDisplays.h"

#import <AppKit/AppKit.h>

namespace quillon {

Point MacDisplays::mouseLocation() const {
    const NSPoint place = [NSEvent mouseLocation];
    return {place.x, place.y};
}

std::span<const Rect> MacDisplays::screens() const {
    @autoreleasepool {
        screens_.clear();
        for (NSScreen* screen in [NSScreen screens]) {
            const NSRect frame = [screen frame];
            screens_.push_back(
                {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height});
        }
        return screens_;
    }
}

} // namespace quillon
