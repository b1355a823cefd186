#include "Platform/MacOS/MacAccessibilityElements.h"

#include "Platform/MacOS/CoreFoundationTypes.h"

#include <ApplicationServices/ApplicationServices.h>

#include <utility>

namespace quillon {

namespace {

/// In seconds. The application answers by itself, and one that hangs must not hold up the main
/// thread, which answers for the user's input.
constexpr float longestWait = 0.25F;

class MacAccessibilityElement final : public AccessibilityElement {
  public:
    /// Null stands for what does not exist.
    explicit MacAccessibilityElement(CfOwned<AXUIElementRef> element)
        : element_(std::move(element)) {
        if (element_) {
            AXUIElementSetMessagingTimeout(element_.get(), longestWait);
        }
    }

    [[nodiscard]] std::optional<std::vector<AccessibilityElementRef>>
    elements(std::string_view attribute) override;

    bool setElement(std::string_view attribute, const AccessibilityElementRef& value) override {
        const auto* element = static_cast<const MacAccessibilityElement*>(value.get());
        return element != nullptr && set(attribute, element->element_.get());
    }

    bool setBool(std::string_view attribute, bool value) override {
        return set(attribute, cfBoolean(value));
    }

    bool performAction(std::string_view action) override {
        const auto name = cfText(action);
        return element_ && name &&
               AXUIElementPerformAction(element_.get(), name.get()) == kAXErrorSuccess;
    }

  private:
    bool set(std::string_view attribute, CFTypeRef value) {
        const auto name = cfText(attribute);
        return element_ && name && value != nullptr &&
               AXUIElementSetAttributeValue(element_.get(), name.get(), value) == kAXErrorSuccess;
    }

    CfOwned<AXUIElementRef> element_;
};

std::optional<std::vector<AccessibilityElementRef>>
MacAccessibilityElement::elements(std::string_view attribute) {
    const auto name = cfText(attribute);
    CFTypeRef copied = nullptr;
    if (!element_ || !name ||
        AXUIElementCopyAttributeValue(element_.get(), name.get(), &copied) != kAXErrorSuccess) {
        return std::nullopt;
    }
    const CfOwned value(copied);
    if (!value || CFGetTypeID(value.get()) != CFArrayGetTypeID()) {
        return std::nullopt;
    }
    const auto array = static_cast<CFArrayRef>(value.get());
    std::vector<AccessibilityElementRef> elements;
    for (CFIndex i = 0; i < CFArrayGetCount(array); ++i) {
        const CFTypeRef item = CFArrayGetValueAtIndex(array, i);
        if (CFGetTypeID(item) != AXUIElementGetTypeID()) {
            return std::nullopt;
        }
        elements.push_back(std::make_shared<MacAccessibilityElement>(
            CfOwned<AXUIElementRef>::retaining(static_cast<AXUIElementRef>(item))));
    }
    return elements;
}

} // namespace

AccessibilityElementRef MacAccessibilityElements::application(ProcessId process) {
    return std::make_shared<MacAccessibilityElement>(
        CfOwned(AXUIElementCreateApplication(process)));
}

} // namespace quillon
