#include "CoreFoundationObjects.h"
#include "FakeAccessibility.h"

#include <cstdio>

using namespace quillon::fakes;

struct __AXUIElement final : FakeObject {
    __AXUIElement(pid_t ofProcess, std::optional<std::string> ofWindow)
        : FakeObject(elementType), process(ofProcess), window(std::move(ofWindow)) {}
    const pid_t process;
    const std::optional<std::string> window;
};

namespace quillon::fakes {

namespace {

std::string nameOf(AXUIElementRef element) {
    const std::string process = std::to_string(element->process);
    return element->window ? "window " + *element->window + " of " + process
                           : "application " + process;
}

std::string textOfValue(CFTypeRef value) {
    if (CFGetTypeID(value) == elementType) {
        return nameOf(static_cast<AXUIElementRef>(value));
    }
    if (CFGetTypeID(value) == booleanType) {
        return CFBooleanGetValue(static_cast<CFBooleanRef>(value)) != 0 ? "true" : "false";
    }
    return "of another type";
}

AXError errorOf(const char* function) {
    const auto& errors = fakeAccessibility().errors;
    const auto found = errors.find(function);
    return found == errors.end() ? kAXErrorSuccess : found->second;
}

CFTypeRef copyWindows(pid_t process) {
    auto& fake = fakeAccessibility();
    switch (fake.answers) {
    case FakeAccessibility::Answers::nothing:
        return nullptr;
    case FakeAccessibility::Answers::text:
        return newText("windows");
    default:
        break;
    }
    std::vector<const void*> list;
    for (const auto& window : fake.windows.at(process)) {
        if (fake.answers == FakeAccessibility::Answers::texts) {
            list.push_back(newText(window));
        } else {
            list.push_back(new __AXUIElement(process, window));
        }
    }
    const auto array = new __CFArray(list, true);
    for (const void* element : list) {
        CFRelease(element);
    }
    return array;
}

} // namespace

FakeAccessibility& fakeAccessibility() {
    static FakeAccessibility fake;
    return fake;
}

} // namespace quillon::fakes

extern "C" {

const CFStringRef kAXTrustedCheckOptionPrompt = constantText("AXTrustedCheckOptionPrompt");

Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
    const auto prompt =
        options == nullptr
            ? nullptr
            : static_cast<CFBooleanRef>(CFDictionaryGetValue(options, kAXTrustedCheckOptionPrompt));
    fakeAccessibility().trustQueries.push_back(
        prompt == nullptr ? std::nullopt : std::optional(CFBooleanGetValue(prompt) != 0));
    return fakeAccessibility().isTrusted;
}

CFTypeID AXUIElementGetTypeID() { return elementType; }

AXUIElementRef AXUIElementCreateApplication(pid_t process) {
    return fakeAccessibility().makesElements ? new __AXUIElement(process, std::nullopt) : nullptr;
}

AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef* value) {
    auto& fake = fakeAccessibility();
    fake.calls.push_back({__func__, nameOf(element), fakeText(attribute), ""});
    if (const AXError error = errorOf(__func__); error != kAXErrorSuccess) {
        return error;
    }
    if (!fake.windows.contains(element->process)) {
        return kAXErrorInvalidUIElement;
    }
    if (element->window || fakeText(attribute) != "AXWindows") {
        return kAXErrorAttributeUnsupported;
    }
    *value = copyWindows(element->process);
    return kAXErrorSuccess;
}

AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                     CFTypeRef value) {
    fakeAccessibility().calls.push_back(
        {__func__, nameOf(element), fakeText(attribute), textOfValue(value)});
    return errorOf(__func__);
}

AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action) {
    fakeAccessibility().calls.push_back({__func__, nameOf(element), fakeText(action), ""});
    return errorOf(__func__);
}

AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(seconds));
    fakeAccessibility().calls.push_back({__func__, nameOf(element), "", text});
    return kAXErrorSuccess;
}

} // extern "C"
