#include "Platform/MacOS/CoreFoundationTypes.h"

namespace quillon {

namespace {
bool isOf(CFTypeID type, CFTypeRef value) { return value != nullptr && CFGetTypeID(value) == type; }
} // namespace

CfOwned<CFStringRef> cfText(std::string_view utf8) {
    return CfOwned(CFStringCreateWithBytes(
        kCFAllocatorDefault, reinterpret_cast<const UInt8*>(utf8.data()),
        static_cast<CFIndex>(utf8.size()), kCFStringEncodingUTF8, Boolean{false}));
}

std::string textOf(CFStringRef text) {
    const CFRange whole = CFRangeMake(0, CFStringGetLength(text));
    const auto bytes = [&](UInt8* buffer, CFIndex size) {
        CFIndex used = 0;
        CFStringGetBytes(text, whole, kCFStringEncodingUTF8, '?', Boolean{false}, buffer, size,
                         &used);
        return used;
    };
    std::string utf8(static_cast<std::size_t>(bytes(nullptr, 0)), '\0');
    bytes(reinterpret_cast<UInt8*>(utf8.data()), static_cast<CFIndex>(utf8.size()));
    return utf8;
}

std::optional<std::string> textIn(CFTypeRef value) {
    if (!isOf(CFStringGetTypeID(), value)) {
        return std::nullopt;
    }
    return textOf(static_cast<CFStringRef>(value));
}

std::optional<bool> booleanIn(CFTypeRef value) {
    if (!isOf(CFBooleanGetTypeID(), value)) {
        return std::nullopt;
    }
    return CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0;
}

std::optional<std::int32_t> integerIn(CFTypeRef value) {
    std::int32_t integer = 0;
    if (!isOf(CFNumberGetTypeID(), value) ||
        CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt32Type, &integer) == 0) {
        return std::nullopt;
    }
    return integer;
}

} // namespace quillon
