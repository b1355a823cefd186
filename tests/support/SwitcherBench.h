#pragma once

#include "Tools/Pointer/WindowSwitcherManager.h"
#include "support/ToolBench.h"

#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// A simulated desktop with windows, a trackpad and the window switcher.
class SwitcherBench : public ToolBench {
  public:
    static constexpr const char* suite = "com.pelorin.shared";

    SimulatedUserDefaults& shared() { return *desktop.userDefaults.suite(suite); }

    std::shared_ptr<WindowSwitcherManager> startSwitcher() {
        return start<WindowSwitcherManager>();
    }

    /// On, with the left edge armed and the pointer there, one notch a switch.
    std::shared_ptr<WindowSwitcherManager> startAtEdge() {
        shared().set("WindowSwitcher_IsEnabled", true);
        shared().set("WindowSwitcher_LeftEdge", true);
        shared().set("WindowSwitcher_EdgeScrollSteps", 1.0);
        pointerAtLeftEdge();
        return startSwitcher();
    }

    /// An ordinary window behind all others.
    static WindowDescription window(ProcessId process, const std::string& owner) {
        return {process, owner, 0, Rect{100, 100, 800, 600}, true};
    }
    void open(ProcessId process, const std::string& owner) {
        desktop.windows.add(window(process, owner));
    }

    [[nodiscard]] ProcessId front() {
        const auto application = desktop.windows.frontmostApplication();
        return application ? application->processIdentifier() : 0;
    }

    Fate pressLeft() { return button(EventType::leftMouseDown); }

    void touch(int contacts) {
        desktop.touchLibrary.touch(contacts);
        desktop.runLoop.drain();
    }
};

} // namespace quillon
