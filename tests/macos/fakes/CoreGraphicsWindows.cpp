#include "CoreFoundationObjects.h"
#include "FakeWindows.h"

#include <cmath>

using namespace quillon::fakes;

namespace quillon::fakes {

namespace {

CFNumberRef newNumber(double value) {
    if (value == std::trunc(value)) {
        return new __CFNumber(static_cast<std::int64_t>(value));
    }
    return new __CFNumber(value);
}

/// Made entry by entry, of keys and values that are released with it.
class DictionaryMaker {
  public:
    DictionaryMaker() = default;
    DictionaryMaker(const DictionaryMaker&) = delete;
    DictionaryMaker& operator=(const DictionaryMaker&) = delete;
    ~DictionaryMaker() {
        for (const auto& [key, value] : entries_) {
            CFRelease(key);
            CFRelease(value);
        }
    }

    /// Takes the value over.
    void add(CFStringRef key, CFTypeRef value) { entries_.emplace_back(CFRetain(key), value); }
    void add(const char* key, double number) {
        entries_.emplace_back(newText(key), newNumber(number));
    }

    [[nodiscard]] CFDictionaryRef make() const { return new __CFDictionary(entries_, true, true); }

  private:
    __CFDictionary::Entries entries_;
};

CFDictionaryRef describe(const FakeListedWindow& window) {
    DictionaryMaker maker;
    if (window.isOfOtherTypes) {
        for (const auto key :
             {kCGWindowOwnerPID, kCGWindowLayer, kCGWindowBounds, kCGWindowIsOnscreen}) {
            maker.add(key, newText("1"));
        }
        maker.add(kCGWindowOwnerName, newNumber(1));
        return maker.make();
    }
    if (window.ownerProcess) {
        maker.add(kCGWindowOwnerPID, new __CFNumber(*window.ownerProcess));
    }
    if (window.ownerName) {
        maker.add(kCGWindowOwnerName, newText(*window.ownerName));
    }
    if (window.layer) {
        maker.add(kCGWindowLayer, newNumber(*window.layer));
    }
    if (window.bounds) {
        maker.add(kCGWindowBounds, CGRectCreateDictionaryRepresentation(*window.bounds));
    }
    if (window.isOnScreen) {
        maker.add(kCGWindowIsOnscreen, *window.isOnScreen ? kCFBooleanTrue : kCFBooleanFalse);
    }
    return maker.make();
}

} // namespace

FakeWindows& fakeWindows() {
    static FakeWindows fake;
    return fake;
}

} // namespace quillon::fakes

extern "C" {

const CFStringRef kCGWindowOwnerPID = constantText("kCGWindowOwnerPID");
const CFStringRef kCGWindowOwnerName = constantText("kCGWindowOwnerName");
const CFStringRef kCGWindowLayer = constantText("kCGWindowLayer");
const CFStringRef kCGWindowBounds = constantText("kCGWindowBounds");
const CFStringRef kCGWindowIsOnscreen = constantText("kCGWindowIsOnscreen");

CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeToWindow) {
    auto& fake = fakeWindows();
    fake.requests.push_back({option, relativeToWindow});
    if (!fake.windows) {
        return nullptr;
    }
    std::vector<const void*> list;
    for (const auto& window : *fake.windows) {
        list.push_back(describe(window));
    }
    const auto array = new __CFArray(list, true);
    for (const void* window : list) {
        CFRelease(window);
    }
    return array;
}

CFDictionaryRef CGRectCreateDictionaryRepresentation(CGRect rect) {
    DictionaryMaker maker;
    maker.add("X", rect.origin.x);
    maker.add("Y", rect.origin.y);
    maker.add("Width", rect.size.width);
    maker.add("Height", rect.size.height);
    return maker.make();
}

bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef dictionary, CGRect* rect) {
    const auto read = [&](const char* key, CGFloat& value) {
        CFStringRef text = newText(key);
        const auto number = static_cast<CFNumberRef>(CFDictionaryGetValue(dictionary, text));
        CFRelease(text);
        return number != nullptr && CFNumberGetValue(number, kCFNumberDoubleType, &value) != 0;
    };
    return read("X", rect->origin.x) && read("Y", rect->origin.y) &&
           read("Width", rect->size.width) && read("Height", rect->size.height);
}

} // extern "C"
