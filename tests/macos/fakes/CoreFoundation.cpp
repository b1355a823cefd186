#include "CoreFoundationObjects.h"
#include "FakeCoreFoundation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

using namespace quillon::fakes;

namespace quillon::fakes {

namespace {

std::atomic<long> living = 0;

[[noreturn]] void misuse(const char* what) {
    std::fprintf(stderr, "CoreFoundation: %s\n", what);
    std::abort();
}

std::optional<std::u16string> unitsOf(std::string_view utf8) {
    std::u16string units;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto first = static_cast<unsigned char>(utf8[i]);
        const std::size_t length = first < 0x80   ? 1
                                   : first < 0xC2 ? 0
                                   : first < 0xE0 ? 2
                                   : first < 0xF0 ? 3
                                   : first < 0xF5 ? 4
                                                  : 0;
        if (length == 0 || i + length > utf8.size()) {
            return std::nullopt;
        }
        char32_t code = length == 1 ? first : first & (0x7FU >> length);
        for (std::size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(utf8[i + k]);
            if ((next & 0xC0U) != 0x80) {
                return std::nullopt;
            }
            code = code << 6U | (next & 0x3FU);
        }
        static constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
        if (code < least[length] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) {
            return std::nullopt;
        }
        if (code < 0x10000) {
            units += static_cast<char16_t>(code);
        } else {
            units += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10U));
            units += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FFU));
        }
        i += length;
    }
    return units;
}

void appendUtf8(std::string& utf8, char32_t code) {
    const auto rest = [&](unsigned shift) {
        utf8 += static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
    };
    if (code < 0x80) {
        utf8 += static_cast<char>(code);
    } else if (code < 0x800) {
        utf8 += static_cast<char>(0xC0U | code >> 6U);
        rest(0);
    } else if (code < 0x10000) {
        utf8 += static_cast<char>(0xE0U | code >> 12U);
        rest(6);
        rest(0);
    } else {
        utf8 += static_cast<char>(0xF0U | code >> 18U);
        rest(12);
        rest(6);
        rest(0);
    }
}

/// How many units were converted. One that is no character becomes `lossByte`, or ends it at 0.
std::pair<CFIndex, std::string> utf8Of(std::u16string_view units, UInt8 lossByte) {
    std::string utf8;
    std::size_t i = 0;
    while (i < units.size()) {
        const char32_t unit = units[i];
        const bool isPair = unit >= 0xD800 && unit < 0xDC00 && i + 1 < units.size() &&
                            units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000;
        if (isPair) {
            appendUtf8(utf8, 0x10000 + ((unit - 0xD800) << 10U) + (units[i + 1] - 0xDC00));
            i += 2;
        } else if (unit >= 0xD800 && unit < 0xE000) {
            if (lossByte == 0) {
                break;
            }
            utf8 += static_cast<char>(lossByte);
            ++i;
        } else {
            appendUtf8(utf8, unit);
            ++i;
        }
    }
    return {static_cast<CFIndex>(i), utf8};
}

} // namespace

FakeObject::FakeObject(CFTypeID kind, bool lasting) : type(kind), isConstant(lasting) {
    if (!isConstant) {
        ++living;
    }
}

FakeObject::~FakeObject() {
    if (!isConstant) {
        --living;
    }
}

const FakeObject* fakeObject(CFTypeRef reference) {
    if (reference == nullptr) {
        misuse("null was given for an object");
    }
    return static_cast<const FakeObject*>(reference);
}

CFStringRef constantText(std::string_view ascii) {
    return new __CFString(std::u16string(ascii.begin(), ascii.end()), true);
}

CFStringRef newText(std::string_view utf8) {
    auto units = unitsOf(utf8);
    return units ? new __CFString(*std::move(units)) : nullptr;
}

std::string fakeText(CFStringRef text) { return utf8Of(text->units, '?').second; }

FakeCoreFoundation& fakeCoreFoundation() {
    static FakeCoreFoundation fake;
    return fake;
}

long FakeCoreFoundation::livingObjects() { return living; }

std::vector<std::string> FakeCoreFoundation::modesOf(CFMachPortRef port) {
    std::vector<std::string> modes;
    for (const auto& [source, mode] : CFRunLoopGetMain()->sources) {
        if (source->port == port) {
            modes.push_back(mode);
        }
    }
    return modes;
}

} // namespace quillon::fakes

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = new __CFBoolean(true);
const CFBooleanRef kCFBooleanFalse = new __CFBoolean(false);
const CFArrayCallBacks kCFTypeArrayCallBacks{};
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks{};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks{};
const CFRunLoopMode kCFRunLoopDefaultMode = constantText("kCFRunLoopDefaultMode");
const CFRunLoopMode kCFRunLoopCommonModes = constantText("kCFRunLoopCommonModes");

CFTypeRef CFRetain(CFTypeRef object) {
    const auto* fake = fakeObject(object);
    if (!fake->isConstant) {
        ++fake->references;
    }
    return object;
}

void CFRelease(CFTypeRef object) {
    const auto* fake = fakeObject(object);
    if (fake->isConstant) {
        return;
    }
    const long left = --fake->references;
    if (left < 0) {
        misuse("an object was released more often than it was retained");
    }
    if (left == 0) {
        delete fake;
    }
}

CFTypeID CFGetTypeID(CFTypeRef object) { return fakeObject(object)->type; }

Boolean CFEqual(CFTypeRef a, CFTypeRef b) {
    if (a == b) {
        return 1;
    }
    if (fakeObject(a)->type != fakeObject(b)->type) {
        return 0;
    }
    switch (fakeObject(a)->type) {
    case stringType:
        return static_cast<CFStringRef>(a)->units == static_cast<CFStringRef>(b)->units;
    case numberType:
        return static_cast<CFNumberRef>(a)->value == static_cast<CFNumberRef>(b)->value;
    default:
        return 0;
    }
}

CFTypeID CFStringGetTypeID() { return stringType; }

CFStringRef CFStringCreateWithBytes(CFAllocatorRef /*allocator*/, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean /*isExternal*/) {
    if (encoding != kCFStringEncodingUTF8) {
        misuse("only UTF-8 is known");
    }
    return newText({reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count)});
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef /*allocator*/, const UniChar* characters,
                                         CFIndex count) {
    return new __CFString(std::u16string(characters, characters + count));
}

CFIndex CFStringGetLength(CFStringRef string) { return static_cast<CFIndex>(string->units.size()); }

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean /*isExternal*/, UInt8* buffer, CFIndex bufferSize,
                         CFIndex* usedSize) {
    if (encoding != kCFStringEncodingUTF8) {
        misuse("only UTF-8 is known");
    }
    const auto [converted, utf8] = utf8Of(std::u16string_view(string->units)
                                              .substr(static_cast<std::size_t>(range.location),
                                                      static_cast<std::size_t>(range.length)),
                                          lossByte);
    if (buffer != nullptr) {
        if (static_cast<CFIndex>(utf8.size()) > bufferSize) {
            misuse("a text was cut");
        }
        std::memcpy(buffer, utf8.data(), utf8.size());
    }
    if (usedSize != nullptr) {
        *usedSize = static_cast<CFIndex>(utf8.size());
    }
    return converted;
}

CFTypeID CFBooleanGetTypeID() { return booleanType; }
Boolean CFBooleanGetValue(CFBooleanRef boolean) { return boolean->value; }

CFTypeID CFNumberGetTypeID() { return numberType; }

CFNumberRef CFNumberCreate(CFAllocatorRef /*allocator*/, CFNumberType type, const void* value) {
    switch (type) {
    case kCFNumberSInt32Type:
        return new __CFNumber(std::int64_t{*static_cast<const std::int32_t*>(value)});
    case kCFNumberSInt64Type:
        return new __CFNumber(*static_cast<const std::int64_t*>(value));
    case kCFNumberFloat64Type:
    case kCFNumberDoubleType:
        return new __CFNumber(*static_cast<const double*>(value));
    }
    misuse("unknown type of number");
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
    const auto* integer = std::get_if<std::int64_t>(&number->value);
    const double real =
        integer != nullptr ? static_cast<double>(*integer) : std::get<double>(number->value);
    switch (type) {
    case kCFNumberSInt32Type: {
        const bool fits = real == std::trunc(real) && std::fabs(real) < 0x1p31;
        const auto cut = fits ? static_cast<std::int32_t>(real) : 0;
        std::memcpy(value, &cut, sizeof cut);
        return fits;
    }
    case kCFNumberSInt64Type: {
        const bool fits =
            integer != nullptr || (real == std::trunc(real) && std::fabs(real) < 0x1p63);
        const auto cut = integer != nullptr ? *integer : fits ? static_cast<std::int64_t>(real) : 0;
        std::memcpy(value, &cut, sizeof cut);
        return fits;
    }
    case kCFNumberFloat64Type:
    case kCFNumberDoubleType:
        std::memcpy(value, &real, sizeof real);
        return integer == nullptr || std::fabs(real) <= 0x1p53;
    }
    misuse("unknown type of number");
}

CFTypeID CFArrayGetTypeID() { return arrayType; }

CFArrayRef CFArrayCreate(CFAllocatorRef /*allocator*/, const void** values, CFIndex count,
                         const CFArrayCallBacks* callBacks) {
    return new __CFArray(std::vector<const void*>(values, values + count),
                         callBacks == &kCFTypeArrayCallBacks);
}

CFIndex CFArrayGetCount(CFArrayRef array) { return static_cast<CFIndex>(array->values.size()); }

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return array->values.at(static_cast<std::size_t>(index));
}

CFTypeID CFDictionaryGetTypeID() { return dictionaryType; }

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef /*allocator*/, const void** keys,
                                   const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
    __CFDictionary::Entries entries;
    for (CFIndex i = 0; i < count; ++i) {
        entries.emplace_back(keys[i], values[i]);
    }
    return new __CFDictionary(std::move(entries), keyCallBacks == &kCFTypeDictionaryKeyCallBacks,
                              valueCallBacks == &kCFTypeDictionaryValueCallBacks);
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary) {
    return static_cast<CFIndex>(dictionary->entries.size());
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* key) {
    for (const auto& [known, value] : dictionary->entries) {
        if (known == key || (dictionary->keepsKeys && CFEqual(known, key) != 0)) {
            return value;
        }
    }
    return nullptr;
}

CFRunLoopRef CFRunLoopGetMain() {
    static __CFRunLoop main;
    return &main;
}

void CFRunLoopAddSource(CFRunLoopRef runLoop, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    fakeCoreFoundation().calls.push_back("CFRunLoopAddSource(" + fakeText(mode) + ")");
    const std::pair place(source, fakeText(mode));
    auto& sources = runLoop->sources;
    if (source->port->isValid &&
        std::find(sources.begin(), sources.end(), place) == sources.end()) {
        CFRetain(source);
        sources.push_back(place);
    }
}

void CFRunLoopRemoveSource(CFRunLoopRef runLoop, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    fakeCoreFoundation().calls.push_back("CFRunLoopRemoveSource(" + fakeText(mode) + ")");
    if (std::erase(runLoop->sources, std::pair(source, fakeText(mode))) > 0) {
        CFRelease(source);
    }
}

CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef /*allocator*/, CFMachPortRef port,
                                                 CFIndex order) {
    fakeCoreFoundation().sourceOrders.push_back(order);
    return fakeCoreFoundation().makesSources && port->isValid ? new __CFRunLoopSource(port)
                                                              : nullptr;
}

void CFMachPortInvalidate(CFMachPortRef port) {
    fakeCoreFoundation().calls.emplace_back("CFMachPortInvalidate");
    if (!port->isValid) {
        return;
    }
    CFRetain(port);
    port->isValid = false;
    if (port->ended) {
        std::exchange(port->ended, nullptr)();
    }
    if (port->callBack != nullptr) {
        std::exchange(port->callBack, nullptr)(port, nullptr);
    }
    auto& sources = CFRunLoopGetMain()->sources;
    std::vector<CFRunLoopSourceRef> gone;
    std::erase_if(sources, [&](const auto& place) {
        if (place.first->port == port) {
            gone.push_back(place.first);
        }
        return place.first->port == port;
    });
    for (const auto source : gone) {
        CFRelease(source);
    }
    CFRelease(port);
}

Boolean CFMachPortIsValid(CFMachPortRef port) { return port->isValid; }

void CFMachPortSetInvalidationCallBack(CFMachPortRef port,
                                       CFMachPortInvalidationCallBack callBack) {
    fakeCoreFoundation().calls.emplace_back(callBack != nullptr
                                                ? "CFMachPortSetInvalidationCallBack"
                                                : "CFMachPortSetInvalidationCallBack(null)");
    if (port->isValid) {
        port->callBack = callBack;
    } else if (callBack != nullptr) {
        callBack(port, nullptr);
    }
}

} // extern "C"

__CFArray::__CFArray(std::vector<const void*> content, bool keeps)
    : FakeObject(arrayType), values(std::move(content)), keepsValues(keeps) {
    for (const void* value : values) {
        if (keepsValues) {
            CFRetain(value);
        }
    }
}

__CFArray::~__CFArray() {
    for (const void* value : values) {
        if (keepsValues) {
            CFRelease(value);
        }
    }
}

__CFDictionary::__CFDictionary(Entries content, bool keepsTheKeys, bool keepsTheValues)
    : FakeObject(dictionaryType), entries(std::move(content)), keepsKeys(keepsTheKeys),
      keepsValues(keepsTheValues) {
    for (const auto& [key, value] : entries) {
        if (keepsKeys) {
            CFRetain(key);
        }
        if (keepsValues) {
            CFRetain(value);
        }
    }
}

__CFDictionary::~__CFDictionary() {
    for (const auto& [key, value] : entries) {
        if (keepsKeys) {
            CFRelease(key);
        }
        if (keepsValues) {
            CFRelease(value);
        }
    }
}

__CFMachPort::~__CFMachPort() {
    if (ended) {
        ended();
    }
}

__CFRunLoopSource::__CFRunLoopSource(CFMachPortRef machPort)
    : FakeObject(runLoopSourceType), port(machPort) {
    CFRetain(port);
}

__CFRunLoopSource::~__CFRunLoopSource() { CFRelease(port); }
