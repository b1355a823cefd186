#include "FakeText.h"

using namespace quillon::fakes;

// As on a Mac.
const NSFontWeight NSFontWeightRegular = 0;
const NSFontWeight NSFontWeightMedium = 0.23;
const NSFontWeight NSFontWeightSemibold = 0.3;

NSAttributedStringKey const NSFontAttributeName = @"NSFont";
NSAttributedStringKey const NSForegroundColorAttributeName = @"NSColor";

@implementation NSFont
+ (NSFont*)ofSize:(CGFloat)size weight:(NSFontWeight)weight monospaced:(BOOL)monospaced {
    NSFont* made = [[NSFont alloc] init];
    fakeFont(made) = {size, weight, static_cast<bool>(monospaced)};
    return made;
}
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
    return [self ofSize:size weight:weight monospaced:NO];
}
+ (NSFont*)monospacedSystemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
    return [self ofSize:size weight:weight monospaced:YES];
}
- (CGFloat)pointSize {
    return fakeFont(self).size;
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
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

@implementation NSColor
+ (NSColor*)named:(const char*)name {
    NSColor* made = [[NSColor alloc] init];
    fakeColor(made).name = name;
    return made;
}
+ (NSColor*)labelColor {
    return [self named:"labelColor"];
}
+ (NSColor*)secondaryLabelColor {
    return [self named:"secondaryLabelColor"];
}
+ (NSColor*)controlAccentColor {
    return [self named:"controlAccentColor"];
}
+ (NSColor*)blackColor {
    return [self named:"blackColor"];
}
+ (NSColor*)whiteColor {
    return [self named:"whiteColor"];
}
+ (NSColor*)systemBlueColor {
    return [self named:"systemBlueColor"];
}
+ (NSColor*)systemGreenColor {
    return [self named:"systemGreenColor"];
}
+ (NSColor*)systemOrangeColor {
    return [self named:"systemOrangeColor"];
}
+ (NSColor*)systemRedColor {
    return [self named:"systemRedColor"];
}
- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha {
    NSColor* made = [[NSColor alloc] init];
    fakeColor(made) = {fakeColor(self).name, alpha};
    return made;
}
- (CGFloat)alphaComponent {
    return fakeColor(self).alpha;
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
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

namespace {
struct Attributed {
    NSString* string = nil;
};
} // namespace

@implementation NSAttributedString
- (NSString*)string {
    return stateOf<Attributed>(self).string;
}
- (instancetype)initWithString:(NSString*)string {
    self = [super init];
    stateOf<Attributed>(self).string = string;
    return self;
}
- (instancetype)initWithString:(NSString*)string attributes:(NSDictionary*)attributes {
    (void)attributes;
    return [self initWithString:string];
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}
- (id)mutableCopyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
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

@implementation NSString (NSStringDrawing)
- (NSSize)sizeWithAttributes:(NSDictionary*)attributes {
    const double size = [[attributes objectForKey:NSFontAttributeName] pointSize];
    return NSMakeSize(0.6 * size * utf8(self).size(), size);
}
- (void)drawInRect:(NSRect)rect withAttributes:(NSDictionary*)attributes {
    drawnTexts().push_back({utf8(self), rect,
                            fakeFont([attributes objectForKey:NSFontAttributeName]),
                            fakeColor([attributes objectForKey:NSForegroundColorAttributeName])});
}
@end

namespace quillon::fakes {

std::vector<DrawnText>& drawnTexts() {
    static std::vector<DrawnText> texts;
    return texts;
}

} // namespace quillon::fakes
