#include "Foundation.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <variant>

using quillon::fakes::stateOf;
using quillon::fakes::stringOf;
using quillon::fakes::utf8;

NSErrorDomain const NSCocoaErrorDomain = @"NSCocoaErrorDomain";
NSErrorUserInfoKey const NSLocalizedDescriptionKey = @"NSLocalizedDescription";
const NSPoint NSZeroPoint{};
const NSSize NSZeroSize{};
const NSRect NSZeroRect{};

BOOL NSMouseInRect(NSPoint point, NSRect rect, BOOL flipped) {
    const bool inHeight = flipped ? point.y >= NSMinY(rect) && point.y < NSMaxY(rect)
                                  : point.y > NSMinY(rect) && point.y <= NSMaxY(rect);
    return point.x >= NSMinX(rect) && point.x < NSMaxX(rect) && inHeight;
}
BOOL NSPointInRect(NSPoint point, NSRect rect) { return NSMouseInRect(point, rect, YES); }

namespace {

struct Number {
    const char* type = "i";
    std::variant<long long, unsigned long long, double> value;
};

struct Bytes {
    std::string bytes;
};

struct Moment {
    NSTimeInterval since1970 = 0;
};

struct Failure {
    NSString* domain = nil;
    NSInteger code = 0;
    NSDictionary* userInfo = nil;
};

struct Address {
    std::string text;
};

constexpr NSTimeInterval referenceDateSince1970 = 978307200;

template <class Value>
NSNumber* numberOf(Value value, const char* type) {
    NSNumber* number = [[NSNumber alloc] init];
    stateOf<Number>(number) = {type, value};
    return number;
}

template <class Value>
Value valueOf(NSNumber* number) {
    return std::visit([](auto value) { return Value(value); }, stateOf<Number>(number).value);
}

NSTimeInterval secondsSince1970() {
    std::timespec now{};
    std::timespec_get(&now, TIME_UTC);
    return NSTimeInterval(now.tv_sec) + NSTimeInterval(now.tv_nsec) / 1e9;
}

bool staysInAnAddress(unsigned char byte) {
    return std::isalnum(byte) || std::strchr("-._~!$&'()*+,=:@/", byte);
}

std::string escaped(const std::string& path) {
    std::string result;
    for (const char byte : path) {
        char text[4];
        std::snprintf(text, sizeof text, "%%%02X", (unsigned char)byte);
        result += byte && staysInAnAddress((unsigned char)byte) ? std::string(1, byte) : text;
    }
    return result;
}

std::string unescaped(const std::string& path) {
    std::string result;
    for (std::size_t at = 0; at < path.size(); ++at) {
        if (path[at] == '%') {
            result += char(std::strtol(path.substr(at + 1, 2).c_str(), nullptr, 16));
            at += 2;
        } else {
            result += path[at];
        }
    }
    return result;
}

// scheme://host/path?query#fragment, of which all but the path may be missing
struct Parts {
    std::string scheme;
    std::string host;
    std::string path;
};

Parts partsOf(NSURL* url) {
    Parts parts;
    auto rest = stateOf<Address>(url).text;
    rest = rest.substr(0, rest.find_first_of("?#"));
    if (const auto colon = rest.find(':'); colon < rest.find('/')) {
        parts.scheme = rest.substr(0, colon);
        rest = rest.substr(colon + 1);
    }
    if (rest.starts_with("//")) {
        const auto slash = std::min(rest.find('/', 2), rest.size());
        const auto authority = rest.substr(2, slash - 2);
        const auto user = authority.find('@') + 1; // 0 when there is none
        parts.host = authority.substr(user, authority.find(':', user) - user);
        rest = rest.substr(slash);
    }
    parts.path = rest;
    return parts;
}

NSString* orNil(const std::string& text) { return text.empty() ? nil : stringOf(text); }

} // namespace

@implementation NSValue
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}
@end

@implementation NSNumber

// The types are those that the system answers, which keeps small unsigned numbers signed.
+ (NSNumber*)numberWithInt:(int)value {
    return numberOf((long long)value, "i");
}
+ (NSNumber*)numberWithUnsignedInt:(unsigned int)value {
    return numberOf((long long)value, "q");
}
+ (NSNumber*)numberWithLongLong:(long long)value {
    return numberOf(value, "q");
}
+ (NSNumber*)numberWithFloat:(float)value {
    return numberOf(double(value), "f");
}
+ (NSNumber*)numberWithDouble:(double)value {
    return numberOf(value, "d");
}
+ (NSNumber*)numberWithBool:(BOOL)value {
    static NSNumber* const yes = numberOf(1LL, "c");
    static NSNumber* const no = numberOf(0LL, "c");
    return value ? yes : no;
}
+ (NSNumber*)numberWithInteger:(NSInteger)value {
    return numberOf((long long)value, "q");
}
+ (NSNumber*)numberWithUnsignedInteger:(NSUInteger)value {
    if (value > NSUInteger(NSIntegerMax))
        return numberOf((unsigned long long)value, "Q");
    return numberOf((long long)value, "q");
}

- (const char*)objCType {
    return stateOf<Number>(self).type;
}
- (char)charValue {
    return valueOf<char>(self);
}
- (int)intValue {
    return valueOf<int>(self);
}
- (unsigned int)unsignedIntValue {
    return valueOf<unsigned int>(self);
}
- (long)longValue {
    return valueOf<long>(self);
}
- (long long)longLongValue {
    return valueOf<long long>(self);
}
- (unsigned long long)unsignedLongLongValue {
    return valueOf<unsigned long long>(self);
}
- (float)floatValue {
    return valueOf<float>(self);
}
- (double)doubleValue {
    return valueOf<double>(self);
}
- (BOOL)boolValue {
    return valueOf<bool>(self);
}
- (NSInteger)integerValue {
    return valueOf<NSInteger>(self);
}
- (NSUInteger)unsignedIntegerValue {
    return valueOf<NSUInteger>(self);
}
- (NSString*)stringValue {
    if (std::strchr("fd", *[self objCType]))
        return [NSString stringWithFormat:@"%.17g", [self doubleValue]];
    if (*[self objCType] == 'Q')
        return [NSString stringWithFormat:@"%llu", [self unsignedLongLongValue]];
    return [NSString stringWithFormat:@"%lld", [self longLongValue]];
}
- (BOOL)isEqualToNumber:(NSNumber*)number {
    return number && [self doubleValue] == [number doubleValue] &&
           [self unsignedLongLongValue] == [number unsignedLongLongValue];
}
- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSNumber class]] && [self isEqualToNumber:object];
}
- (NSUInteger)hash {
    return std::hash<double>{}([self doubleValue]);
}
- (NSString*)description {
    return [self stringValue];
}

@end

@implementation NSData

+ (instancetype)data {
    return [[self alloc] init];
}
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length {
    const id data = [[self alloc] init];
    if (length)
        stateOf<Bytes>(data).bytes.assign((const char*)bytes, length);
    return data;
}
- (NSUInteger)length {
    return stateOf<Bytes>(self).bytes.size();
}
// As the system, it has no bytes to show when it is empty.
- (const void*)bytes {
    return [self length] ? stateOf<Bytes>(self).bytes.data() : nullptr;
}
- (BOOL)isEqualToData:(NSData*)other {
    return other && stateOf<Bytes>(self).bytes == stateOf<Bytes>(other).bytes;
}
- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSData class]] && [self isEqualToData:object];
}
- (NSUInteger)hash {
    return std::hash<std::string>{}(stateOf<Bytes>(self).bytes);
}
// In two ranges, since the system may hold the bytes in several.
- (void)enumerateByteRangesUsingBlock:(void(NS_NOESCAPE ^)(const void*, NSRange, BOOL*))block {
    const auto& bytes = stateOf<Bytes>(self).bytes;
    const NSUInteger half = bytes.size() / 2;
    BOOL stop = NO;
    if (half)
        block(bytes.data(), NSMakeRange(0, half), &stop);
    if (!stop && bytes.size() > half)
        block(bytes.data() + half, NSMakeRange(half, bytes.size() - half), &stop);
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return [self isKindOfClass:[NSMutableData class]]
               ? [NSData dataWithBytes:[self bytes] length:[self length]]
               : self;
}
- (id)mutableCopyWithZone:(NSZone*)zone {
    (void)zone;
    return [NSMutableData dataWithBytes:[self bytes] length:[self length]];
}

@end

@implementation NSMutableData
- (void*)mutableBytes {
    return stateOf<Bytes>(self).bytes.data();
}
- (void)appendBytes:(const void*)bytes length:(NSUInteger)length {
    if (length)
        stateOf<Bytes>(self).bytes.append((const char*)bytes, length);
}
@end

@implementation NSDate

+ (instancetype)date {
    return [self dateWithTimeIntervalSinceNow:0];
}
+ (instancetype)dateWithTimeIntervalSinceNow:(NSTimeInterval)seconds {
    return [self dateWithTimeIntervalSince1970:secondsSince1970() + seconds];
}
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)seconds {
    const id date = [[self alloc] init];
    stateOf<Moment>(date).since1970 = seconds;
    return date;
}
- (NSTimeInterval)timeIntervalSince1970 {
    return stateOf<Moment>(self).since1970;
}
- (NSTimeInterval)timeIntervalSinceReferenceDate {
    return [self timeIntervalSince1970] - referenceDateSince1970;
}
- (NSTimeInterval)timeIntervalSinceNow {
    return [self timeIntervalSince1970] - secondsSince1970();
}
- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSDate class]] &&
           [self timeIntervalSince1970] == [(NSDate*)object timeIntervalSince1970];
}
- (NSUInteger)hash {
    return std::hash<double>{}([self timeIntervalSince1970]);
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation NSError

- (instancetype)initWithDomain:(NSErrorDomain)domain
                          code:(NSInteger)code
                      userInfo:(NSDictionary*)userInfo {
    stateOf<Failure>(self) = {domain, code, userInfo ?: [NSDictionary dictionary]};
    return self;
}
+ (instancetype)errorWithDomain:(NSErrorDomain)domain
                           code:(NSInteger)code
                       userInfo:(NSDictionary*)userInfo {
    return [[self alloc] initWithDomain:domain code:code userInfo:userInfo];
}
- (NSErrorDomain)domain {
    return stateOf<Failure>(self).domain;
}
- (NSInteger)code {
    return stateOf<Failure>(self).code;
}
- (NSDictionary*)userInfo {
    return stateOf<Failure>(self).userInfo;
}
- (NSString*)localizedDescription {
    return
        [[self userInfo] objectForKey:NSLocalizedDescriptionKey]
            ?: [NSString stringWithFormat:@"The operation couldn’t be completed. (%@ error %ld.)",
                                          [self domain], [self code]];
}
- (NSString*)description {
    return [NSString stringWithFormat:@"Error Domain=%@ Code=%ld", [self domain], [self code]];
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

@end

@implementation NSURL

- (instancetype)initWithString:(NSString*)string {
    const auto text = utf8(string);
    if (text.empty() || text.find_first_of(" \"<>\\^`{|}") != std::string::npos)
        return nil;
    stateOf<Address>(self).text = text;
    return self;
}
+ (instancetype)URLWithString:(NSString*)string {
    return [[self alloc] initWithString:string];
}
+ (NSURL*)fileURLWithPath:(NSString*)path {
    return [self fileURLWithPath:path isDirectory:[path hasSuffix:@"/"]];
}
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDirectory {
    const auto text = escaped(utf8(path));
    return [self URLWithString:stringOf("file://" + text +
                                        (isDirectory && !text.ends_with('/') ? "/" : ""))];
}
- (NSString*)absoluteString {
    return stringOf(stateOf<Address>(self).text);
}
- (NSString*)scheme {
    return orNil(partsOf(self).scheme);
}
- (NSString*)host {
    return orNil(partsOf(self).host);
}
- (NSString*)path {
    auto path = unescaped(partsOf(self).path);
    if (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return stringOf(path);
}
- (BOOL)isFileURL {
    return partsOf(self).scheme == "file";
}
- (const char*)fileSystemRepresentation {
    return [[self path] UTF8String];
}
- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSURL class]] &&
           [[self absoluteString] isEqualToString:[(NSURL*)object absoluteString]];
}
- (NSUInteger)hash {
    return [[self absoluteString] hash];
}
- (NSString*)description {
    return [self absoluteString];
}
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

@end
