#include "FakeImages.h"

#include <map>

using namespace quillon::fakes;

@implementation NSImage
/// One for each name.
+ (NSImage*)imageNamed:(NSString*)name {
    static std::map<std::string, NSImage*> known;
    const std::string text = utf8(name);
    if (!fakeImages().assets.contains(text))
        return nil;
    NSImage*& image = known[text];
    if (!image) {
        image = [[NSImage alloc] init];
        fakeImage(image).name = text;
    }
    return image;
}
+ (instancetype)imageWithSystemSymbolName:(NSString*)name
                 accessibilityDescription:(NSString*)description {
    if (!fakeImages().symbols.contains(utf8(name)))
        return nil;
    NSImage* image = [[NSImage alloc] init];
    fakeImage(image) = {utf8(name), true, utf8(description), {}, true};
    return image;
}
- (NSSize)size {
    return fakeImage(self).size;
}
- (void)setSize:(NSSize)size {
    fakeImage(self).size = size;
}
- (BOOL)isTemplate {
    return fakeImage(self).isTemplate;
}
- (void)setTemplate:(BOOL)isTemplate {
    fakeImage(self).isTemplate = isTemplate;
}
- (NSString*)accessibilityDescription {
    return stringOf(fakeImage(self).accessibilityDescription);
}
- (void)setAccessibilityDescription:(NSString*)description {
    fakeImage(self).accessibilityDescription = utf8(description);
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    NSImage* made = [[NSImage alloc] init];
    fakeImage(made) = fakeImage(self);
    return made;
}
- (void)encodeWithCoder:(NSCoder*)coder {
    (void)coder;
}
- (instancetype)initWithCoder:(NSCoder*)coder {
    (void)coder;
    return nil;
}
+ (BOOL)supportsSecureCoding {
    return YES;
}
@end

namespace quillon::fakes {

FakeImages& fakeImages() {
    static FakeImages images;
    return images;
}

} // namespace quillon::fakes
