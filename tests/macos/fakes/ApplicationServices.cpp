#include "CoreFoundationObjects.h"
#include "FakeAccessibility.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <string_view>

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

/// What the real ones have of what can be set and done; here it has no effect.
constexpr std::array<std::string_view, 4> applicationAttributes{"AXFocusedWindow", "AXFrontmost",
                                                                "AXHidden", "AXMainWindow"};
constexpr std::array<std::string_view, 5> windowAttributes{"AXFocused", "AXMain", "AXMinimized",
                                                           "AXPosition", "AXSize"};
constexpr std::array<std::string_view, 1> windowActions{"AXRaise"};

bool isAmong(std::span<const std::string_view> names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// What a function answers for an element and something that it has, or has not.
AXError answerOf(const char* function, AXUIElementRef element, bool has, AXError unsupported) {
    if (const AXError error = errorOf(function); error != kAXErrorSuccess) {
        return error;
    }
    if (!fakeAccessibility().windows.contains(element->process)) {
        return kAXErrorInvalidUIElement;
    }
    return has ? kAXErrorSuccess : unsupported;
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
    const bool has = element->window ? isAmong(windowAttributes, fakeText(attribute))
                                     : isAmong(applicationAttributes, fakeText(attribute));
    return answerOf(__func__, element, has, kAXErrorAttributeUnsupported);
}

AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action) {
    fakeAccessibility().calls.push_back({__func__, nameOf(element), fakeText(action), ""});
    const bool has = element->window && isAmong(windowActions, fakeText(action));
    return answerOf(__func__, element, has, kAXErrorActionUnsupported);
}

AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(seconds));
    fakeAccessibility().calls.push_back({__func__, nameOf(element), "", text});
    return kAXErrorSuccess;
}

} // extern "C"
