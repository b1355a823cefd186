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

    /// Makes the manager and lets its first trust answer arrive.
    std::shared_ptr<WindowSwitcherManager> startSwitcher() {
        auto manager = WindowSwitcherManager::create(desktop.platform);
        desktop.runLoop.drain();
        return manager;
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

    /// What has happened of this kind, in order, and is forgotten.
    std::vector<std::string> take(const std::string& kind) {
        std::vector<std::string> taken;
        for (const std::string& action : actions) {
            if (action.starts_with(kind + ' ')) {
                taken.push_back(action.substr(kind.size() + 1));
            }
        }
        actions.clear();
        return taken;
    }

    Fate button(EventType type) {
        FieldEvent event;
        const Fate fate = desktop.events.deliver(type, event);
        desktop.runLoop.drain();
        return fate;
    }
    Fate pressLeft() { return button(EventType::leftMouseDown); }

    void touch(int contacts) {
        desktop.touchLibrary.touch(contacts);
        desktop.runLoop.drain();
    }
};

} // namespace quillon
