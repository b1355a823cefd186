#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quillon::fakes {

/// What every reference of the C services points to.
struct FakeObject {
    explicit FakeObject(CFTypeID kind, bool lasting = false);
    FakeObject(const FakeObject&) = delete;
    FakeObject& operator=(const FakeObject&) = delete;
    virtual ~FakeObject();

    const CFTypeID type;
    const bool isConstant; // lives as long as the process, and is not counted
    mutable std::atomic<long> references = 1;
};

enum FakeTypes : CFTypeID {
    stringType = 1,
    booleanType,
    numberType,
    arrayType,
    dictionaryType,
    runLoopType,
    runLoopSourceType,
    machPortType,
    eventType,
    elementType,
};

const FakeObject* fakeObject(CFTypeRef reference);

/// A string that lasts, as the names are that the system exports.
CFStringRef constantText(std::string_view ascii);

/// A string that the caller releases.
CFStringRef newText(std::string_view utf8);

std::string fakeText(CFStringRef text);

} // namespace quillon::fakes

struct __CFString final : quillon::fakes::FakeObject {
    explicit __CFString(std::u16string content, bool lasting = false)
        : FakeObject(quillon::fakes::stringType, lasting), units(std::move(content)) {}
    const std::u16string units;
};

struct __CFBoolean final : quillon::fakes::FakeObject {
    explicit __CFBoolean(bool content)
        : FakeObject(quillon::fakes::booleanType, true), value(content) {}
    const bool value;
};

struct __CFNumber final : quillon::fakes::FakeObject {
    explicit __CFNumber(std::variant<std::int64_t, double> content)
        : FakeObject(quillon::fakes::numberType), value(content) {}
    const std::variant<std::int64_t, double> value;
};

struct __CFArray final : quillon::fakes::FakeObject {
    __CFArray(std::vector<const void*> content, bool keeps);
    ~__CFArray() override;
    const std::vector<const void*> values;
    const bool keepsValues;
};

struct __CFDictionary final : quillon::fakes::FakeObject {
    using Entries = std::vector<std::pair<const void*, const void*>>;
    __CFDictionary(Entries content, bool keepsTheKeys, bool keepsTheValues);
    ~__CFDictionary() override;
    const Entries entries;
    const bool keepsKeys;
    const bool keepsValues;
};

struct __CFMachPort final : quillon::fakes::FakeObject {
    __CFMachPort() : FakeObject(quillon::fakes::machPortType) {}
    ~__CFMachPort() override;
    bool isValid = true;
    CFMachPortInvalidationCallBack callBack = nullptr;
    std::function<void()> ended; // once, when it is invalidated or goes
};

struct __CFRunLoopSource final : quillon::fakes::FakeObject {
    explicit __CFRunLoopSource(CFMachPortRef machPort);
    ~__CFRunLoopSource() override;
    const CFMachPortRef port;
};

struct __CFRunLoop final : quillon::fakes::FakeObject {
    __CFRunLoop() : FakeObject(quillon::fakes::runLoopType, true) {}
    std::vector<std::pair<CFRunLoopSourceRef, std::string>> sources; // each with its mode
};
