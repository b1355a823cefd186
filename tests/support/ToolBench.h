#pragma once

#include "Platform/Simulated/SimulatedDesktop.h"
#include "Tools/Edges/Tool4EdgesManager.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// A simulated desktop that writes down what happens on it, and the means to scroll there.
class ToolBench {
  public:
    static constexpr const char* previousScript =
        R"(script tell application "System Events" to key code 123 using {control down})";
    static constexpr const char* nextScript =
        R"(script tell application "System Events" to key code 124 using {control down})";

    using Fate = SimulatedEventServices::Fate;

    std::shared_ptr<Tool4EdgesManager> startTool() { return start<Tool4EdgesManager>(); }

    void store(const char* key, DefaultsObject object) {
        desktop.userDefaults.standard().set(key, std::move(object));
    }

    Fate wheel(double vertical, double horizontal = 0) {
        FieldEvent event;
        event.setDoubleValueField(EventField::scrollLineDeltaAxis1, vertical);
        event.setDoubleValueField(EventField::scrollLineDeltaAxis2, horizontal);
        return scroll(event);
    }

    Fate scroll(const FieldEvent& event) { return deliver(EventType::scrollWheel, event); }

    Fate button(EventType type, MouseButton button = MouseButton::left) {
        return deliver(type, FieldEvent(type, {}, button));
    }

    /// To the taps, and to the monitors what they let through.
    Fate deliver(EventType type, FieldEvent event) {
        const Fate fate = desktop.events.deliver(type, event);
        if (fate != Fate::consume) {
            desktop.monitors.deliver(type, event);
        }
        desktop.runLoop.drain();
        return fate;
    }

    /// Makes the tool's manager and lets its first trust answer arrive.
    template <class Manager>
    std::shared_ptr<Manager> start() {
        auto manager = Manager::create(desktop.platform);
        desktop.runLoop.drain();
        return manager;
    }

    void advance(double seconds) { desktop.runLoop.advance(seconds); }

    void wheelTimes(int count, double delta) {
        for (int i = 0; i < count; ++i) {
            wheel(delta);
        }
    }

    /// What has happened of this kind, in order; all is forgotten.
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

    [[nodiscard]] int count(const std::string& action) const {
        return static_cast<int>(std::count(actions.begin(), actions.end(), action));
    }

    [[nodiscard]] bool hasTap() const { return desktop.events.hasTap(Tool4EdgesManager::toolId); }

    void pointerAtLeftEdge() { desktop.displays.pointer = {5, 450}; }

    std::vector<std::string> actions;
    std::function<void(const std::string& action)> react; // as it happens
    SimulatedDesktop desktop{[this](std::string_view kind, const std::string& detail) {
        actions.push_back(std::string(kind) + " " + detail);
        if (react) {
            react(actions.back());
        }
    }};
};

} // namespace quillon
