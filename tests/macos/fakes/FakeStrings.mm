#include "Foundation.h"

#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <locale>
#include <optional>

using quillon::fakes::arrayOf;
using quillon::fakes::stateOf;
using quillon::fakes::stringOf;
using quillon::fakes::utf8;

namespace {

struct Text {
    std::string bytes; // UTF-8
};

using Converter = std::codecvt<char16_t, char8_t, std::mbstate_t>;

/// Nothing when the bytes are no UTF-8.
std::optional<std::u16string> utf16(std::string_view bytes) {
    const auto& converter = std::use_facet<Converter>(std::locale::classic());
    std::mbstate_t state{};
    std::u16string units(bytes.size(), u'\0');
    const auto* from = (const char8_t*)bytes.data();
    const auto* end = from + bytes.size();
    auto* to = units.data();
    const auto result = converter.in(state, from, end, from, to, to + units.size(), to);
    if (result != std::codecvt_base::ok || from != end)
        return {};
    units.resize(std::size_t(to - units.data()));
    return units;
}

std::string toUtf8(std::u16string_view units) {
    const auto& converter = std::use_facet<Converter>(std::locale::classic());
    std::mbstate_t state{};
    std::string bytes(units.size() * 3, '\0');
    const auto* from = units.data();
    auto* to = (char8_t*)bytes.data();
    converter.out(state, from, from + units.size(), from, to, to + bytes.size(), to);
    bytes.resize(std::size_t((char*)to - bytes.data()));
    return bytes;
}

std::u16string unitsOf(NSString* string) { return utf16(utf8(string)).value_or(u""); }

template <class Change>
NSString* changed(NSString* string, Change change) {
    std::string bytes = utf8(string);
    for (char& byte : bytes)
        byte = char(change((unsigned char)byte));
    return stringOf(bytes);
}

/// One conversion, such as "%-5ld", with the argument that belongs to it.
std::string converted(const std::string& conversion, std::va_list& arguments) {
    char text[512];
    const auto print = [&](auto value) {
        std::snprintf(text, sizeof text, conversion.c_str(), value);
        return std::string(text);
    };
    const bool isLong = conversion.find_first_of("lqzt") != std::string::npos;
    switch (conversion.back()) {
    case '@': {
        const id object = va_arg(arguments, id);
        return object ? utf8([object description]) : "(null)";
    }
    case 's':
        return va_arg(arguments, const char*);
    case 'p':
        return print(va_arg(arguments, void*));
    case 'a':
    case 'e':
    case 'f':
    case 'g':
    case 'E':
    case 'F':
    case 'G':
        return print(va_arg(arguments, double));
    default:
        return isLong ? print(va_arg(arguments, long)) : print(va_arg(arguments, int));
    }
}

std::string formatted(const std::string& format, std::va_list& arguments) {
    std::string result;
    for (std::size_t at = 0; at < format.size(); ++at) {
        if (format[at] != '%') {
            result += format[at];
        } else if (format[at + 1] == '%') {
            result += format[++at];
        } else {
            const auto end = format.find_first_of("@aAcdieEfFgGopsuxX", at + 1);
            result += converted(format.substr(at, end - at + 1), arguments);
            at = end;
        }
    }
    return result;
}

} // namespace

namespace quillon::fakes {

std::string utf8(NSString* string) {
    return {[string UTF8String] ?: "", [string lengthOfBytesUsingEncoding:NSUTF8StringEncoding]};
}

NSString* stringOf(std::string_view utf8) {
    return [[NSString alloc] initWithBytes:utf8.data()
                                    length:utf8.size()
                                  encoding:NSUTF8StringEncoding];
}

} // namespace quillon::fakes

@implementation NSString

- (const char*)UTF8String {
    return stateOf<Text>(self).bytes.c_str();
}
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding {
    if (encoding == NSUTF16StringEncoding)
        return 2 * [self length];
    return stateOf<Text>(self).bytes.size();
}
- (NSUInteger)length {
    return unitsOf(self).size();
}
- (unichar)characterAtIndex:(NSUInteger)index {
    return unitsOf(self).at(index);
}
- (const char*)cStringUsingEncoding:(NSStringEncoding)encoding {
    return encoding == NSUTF8StringEncoding || encoding == NSASCIIStringEncoding ? [self UTF8String]
                                                                                 : nullptr;
}
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding {
    if (encoding == NSUTF16StringEncoding) {
        const auto units = unitsOf(self);
        return [NSData dataWithBytes:units.data() length:2 * units.size()];
    }
    const auto bytes = utf8(self);
    return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

- (instancetype)init {
    return self;
}
- (instancetype)initWithBytes:(const void*)bytes
                       length:(NSUInteger)len
                     encoding:(NSStringEncoding)encoding {
    auto& text = stateOf<Text>(self).bytes;
    if (encoding == NSUTF16StringEncoding) {
        text = toUtf8({(const char16_t*)bytes, len / 2});
        return self;
    }
    if (encoding == NSISOLatin1StringEncoding) {
        const auto* characters = (const unsigned char*)bytes;
        text = toUtf8(std::u16string(characters, characters + len));
        return self;
    }
    text.assign((const char*)bytes, len);
    return utf16(text) ? self : nil;
}
- (instancetype)initWithUTF8String:(const char*)string {
    const std::string_view view = string;
    return [self initWithBytes:view.data() length:view.size() encoding:NSUTF8StringEncoding];
}
- (instancetype)initWithString:(NSString*)string {
    stateOf<Text>(self).bytes = utf8(string);
    return self;
}
- (instancetype)initWithData:(NSData*)data encoding:(NSStringEncoding)encoding {
    return [self initWithBytes:[data bytes] length:[data length] encoding:encoding];
}
- (instancetype)initWithFormat:(NSString*)format, ... {
    std::va_list arguments;
    va_start(arguments, format);
    stateOf<Text>(self).bytes = formatted(utf8(format), arguments);
    va_end(arguments);
    return self;
}
+ (instancetype)string {
    return [[self alloc] init];
}
+ (instancetype)stringWithString:(NSString*)string {
    return [[self alloc] initWithString:string];
}
+ (instancetype)stringWithUTF8String:(const char*)string {
    return [[self alloc] initWithUTF8String:string];
}
+ (instancetype)stringWithFormat:(NSString*)format, ... {
    std::va_list arguments;
    va_start(arguments, format);
    const auto text = formatted(utf8(format), arguments);
    va_end(arguments);
    return [[self alloc] initWithUTF8String:text.c_str()];
}

- (NSString*)substringFromIndex:(NSUInteger)from {
    return stringOf(toUtf8(unitsOf(self).substr(from)));
}
- (NSString*)substringToIndex:(NSUInteger)to {
    return stringOf(toUtf8(unitsOf(self).substr(0, to)));
}
- (NSString*)substringWithRange:(NSRange)range {
    return stringOf(toUtf8(unitsOf(self).substr(range.location, range.length)));
}
- (NSComparisonResult)compare:(NSString*)string {
    const int order = unitsOf(self).compare(unitsOf(string));
    return order < 0 ? NSOrderedAscending : order > 0 ? NSOrderedDescending : NSOrderedSame;
}
- (NSComparisonResult)caseInsensitiveCompare:(NSString*)string {
    return [[self lowercaseString] compare:[string lowercaseString]];
}
- (BOOL)isEqualToString:(NSString*)string {
    return string && utf8(self) == utf8(string);
}
- (BOOL)hasPrefix:(NSString*)string {
    return utf8(self).starts_with(utf8(string));
}
- (BOOL)hasSuffix:(NSString*)string {
    return utf8(self).ends_with(utf8(string));
}
- (BOOL)containsString:(NSString*)string {
    return utf8(self).find(utf8(string)) != std::string::npos;
}
- (NSRange)rangeOfString:(NSString*)string {
    const auto wanted = unitsOf(string);
    const auto at = unitsOf(self).find(wanted);
    if (wanted.empty() || at == std::u16string::npos)
        return {NSUInteger(NSNotFound), 0};
    return {at, wanted.size()};
}
- (NSString*)stringByAppendingString:(NSString*)string {
    return stringOf(utf8(self) + utf8(string));
}
- (NSArray<NSString*>*)componentsSeparatedByString:(NSString*)separator {
    const auto text = utf8(self);
    const auto between = utf8(separator);
    std::vector<id> parts;
    std::size_t from = 0;
    for (auto at = text.find(between); at != std::string::npos; at = text.find(between, from)) {
        parts.push_back(stringOf(text.substr(from, at - from)));
        from = at + between.size();
    }
    parts.push_back(stringOf(text.substr(from)));
    return arrayOf(parts);
}

- (double)doubleValue {
    return std::strtod([self UTF8String], nullptr);
}
- (int)intValue {
    return int(std::strtol([self UTF8String], nullptr, 10));
}
- (NSInteger)integerValue {
    return std::strtol([self UTF8String], nullptr, 10);
}
- (BOOL)boolValue {
    const auto text = utf8(self);
    const auto first = text.find_first_not_of(" +-0");
    return first != std::string::npos &&
           std::string_view("YyTt123456789").find(text[first]) != std::string_view::npos;
}
// Of letters outside ASCII the case is kept.
- (NSString*)lowercaseString {
    return changed(self, [](int byte) { return byte < 128 ? std::tolower(byte) : byte; });
}
- (NSString*)uppercaseString {
    return changed(self, [](int byte) { return byte < 128 ? std::toupper(byte) : byte; });
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return [self isKindOfClass:[NSMutableString class]] ? stringOf(utf8(self)) : self;
}
- (id)mutableCopyWithZone:(NSZone*)zone {
    (void)zone;
    return [NSMutableString stringWithString:self];
}
- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSString class]] && [self isEqualToString:object];
}
- (NSUInteger)hash {
    return std::hash<std::string>{}(utf8(self));
}
- (NSString*)description {
    return self;
}

@end

@implementation NSMutableString
- (void)replaceCharactersInRange:(NSRange)range withString:(NSString*)string {
    auto units = unitsOf(self);
    stateOf<Text>(self).bytes =
        toUtf8(units.replace(range.location, range.length, unitsOf(string)));
}
- (void)appendString:(NSString*)string {
    stateOf<Text>(self).bytes += utf8(string);
}
@end

@implementation NSSimpleCString
- (const char*)UTF8String {
    return bytes;
}
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding {
    return encoding == NSUTF16StringEncoding ? 2 * [self length] : NSUInteger(numBytes);
}
@end

@implementation NSConstantString
@end

void NSLog(NSString* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::fprintf(stderr, "%s\n", formatted(utf8(format), arguments).c_str());
    va_end(arguments);
}
