#include "Platform/MacOS/NativeLooks.h"

#include "Platform/MacOS/NativeText.h"

#include <array>

namespace quillon {

namespace {

NSFontWeight nativeWeight(FontWeight weight) {
    switch (weight) {
    case FontWeight::regular:
        break;
    case FontWeight::medium:
        return NSFontWeightMedium;
    case FontWeight::semibold:
        return NSFontWeightSemibold;
    }
    return NSFontWeightRegular;
}

} // namespace

NSFont* nativeFont(const Font& font) {
    const NSFontWeight weight = nativeWeight(font.weight);
    return font.monospaced ? [NSFont monospacedSystemFontOfSize:font.size weight:weight]
                           : [NSFont systemFontOfSize:font.size weight:weight];
}

NSTextAlignment nativeAlignment(TextAlignment alignment) {
    switch (alignment) {
    case TextAlignment::natural:
        break;
    case TextAlignment::left:
        return NSTextAlignmentLeft;
    case TextAlignment::center:
        return NSTextAlignmentCenter;
    case TextAlignment::right:
        return NSTextAlignmentRight;
    }
    return NSTextAlignmentNatural;
}

NSImageScaling nativeScaling(ImageScaling scaling) {
    return scaling == ImageScaling::proportionallyDown ? NSImageScaleProportionallyDown
                                                       : NSImageScaleNone;
}

NSCellImagePosition nativePosition(ImagePosition position) {
    switch (position) {
    case ImagePosition::noImage:
        break;
    case ImagePosition::imageOnly:
        return NSImageOnly;
    case ImagePosition::imageLeft:
        return NSImageLeft;
    }
    return NSNoImage;
}

NSColor* nativeColor(std::string_view name) {
    struct Named {
        std::string_view name;
        NSColor* (*color)();
    };
    static const std::array colors{
        Named{"labelColor", [] { return [NSColor labelColor]; }},
        Named{"secondaryLabelColor", [] { return [NSColor secondaryLabelColor]; }},
        Named{"controlAccentColor", [] { return [NSColor controlAccentColor]; }},
        Named{"systemRedColor", [] { return [NSColor systemRedColor]; }},
        Named{"systemOrangeColor", [] { return [NSColor systemOrangeColor]; }},
        Named{"systemGreenColor", [] { return [NSColor systemGreenColor]; }},
        Named{"systemBlueColor", [] { return [NSColor systemBlueColor]; }},
        Named{"blackColor", [] { return [NSColor blackColor]; }},
        Named{"whiteColor", [] { return [NSColor whiteColor]; }},
    };
    for (const Named& one : colors) {
        if (one.name == name) {
            return one.color();
        }
    }
    return nil;
}

NSImage* nativeImage(const Image& image) {
    NSString* const name = nativeText(image.name);
    NSImage* found = nil;
    if (image.isSymbol) {
        found = [NSImage imageWithSystemSymbolName:name
                          accessibilityDescription:nativeText(image.accessibilityDescription)];
    } else {
        // A copy: the system hands out one picture per name, and whoever else asks for it is not to
        // see what is changed here.
        found = [[NSImage imageNamed:name] copy];
    }
    if (image.size.width > 0 && image.size.height > 0) {
        [found setSize:NSMakeSize(image.size.width, image.size.height)];
    }
    if (found != nil && image.isTemplate != [found isTemplate]) {
        [found setTemplate:image.isTemplate];
    }
    return found;
}

} // namespace quillon
