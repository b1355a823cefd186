#pragma once

#include "Platform/Applications.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace quillon {

class AccessibilityElement;
using AccessibilityElementRef = std::shared_ptr<AccessibilityElement>;

/// An application or a window of one, as assistive programs see it. Main thread only.
///
/// Nothing here waits for the application: what it stands for may be gone at any time, and then
/// reading fails and writing changes nothing. Whatever a kind of element does not have, it refuses.
class AccessibilityElement {
  public:
    virtual ~AccessibilityElement() = default;

    /// An attribute that holds elements: "AXWindows", an application's windows front to back.
    /// Nothing when it cannot be read.
    [[nodiscard]] virtual std::optional<std::vector<AccessibilityElementRef>>
    elements(std::string_view /*attribute*/) {
        return std::nullopt;
    }

    /// "AXFocusedWindow" of an application. False when refused.
    virtual bool setElement(std::string_view /*attribute*/,
                            const AccessibilityElementRef& /*value*/) {
        return false;
    }

    /// "AXMain" of a window. False when refused.
    virtual bool setBool(std::string_view /*attribute*/, bool /*value*/) { return false; }

    /// "AXRaise" of a window. False when refused.
    virtual bool performAction(std::string_view /*action*/) { return false; }
};

class AccessibilityElements {
  public:
    virtual ~AccessibilityElements() = default;

    /// Never null; an element of a process that is none answers nothing.
    [[nodiscard]] virtual AccessibilityElementRef application(ProcessId process) = 0;
};

} // namespace quillon
