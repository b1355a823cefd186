#pragma once

#include "Platform/AccessibilityElement.h"
#include "Platform/Applications.h"
#include "Platform/WindowServer.h"

namespace quillon {

class LinuxWindows final : public Applications, public WindowServer, public AccessibilityElements {
  public:
    RunningApplicationRef frontmostApplication() override { return nullptr; }
    RunningApplicationRef runningApplication(ProcessId /*process*/) override { return nullptr; }
    std::optional<std::vector<WindowDescription>>
    copyWindowList(WindowListOptions /*options*/) override {
        return std::nullopt;
    }
    [[nodiscard]] AccessibilityElementRef application(ProcessId /*process*/) override {
        return nullptr;
    }
};

} // namespace quillon
