#pragma once

#include "AppDelegate.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// A simulated desktop with the shell on it, and a hand at its status item.
class ShellBench {
  public:
    ShellBench() { Platform::setCurrent(&desktop.platform); }
    ~ShellBench() { Platform::setCurrent(nullptr); }
    ShellBench(const ShellBench&) = delete;
    ShellBench& operator=(const ShellBench&) = delete;

    void launch() {
        delegate = AppDelegate::create(
            desktop.platform, [this] { act("hub", "start"); }, [this] { act("hub", "end"); });
        desktop.application.setDelegate(delegate);
        delegate->applicationDidFinishLaunching();
        desktop.runLoop.drain();
    }

    [[nodiscard]] SimulatedStatusItem& item() const { return *desktop.statusBar.item.lock(); }
    [[nodiscard]] SimulatedStatusButton& button() const { return *item().normalButton; }

    /// What shows the level; null while the icon is shown.
    [[nodiscard]] std::shared_ptr<VolumeBarMenuBarButton> level() const {
        const auto container = item().customView();
        return container && !container->subviews().empty()
                   ? std::dynamic_pointer_cast<VolumeBarMenuBarButton>(
                         container->subviews().front())
                   : nullptr;
    }
    [[nodiscard]] double alpha() const { return item().customView()->alphaValue(); }

    /// As the system does it: the control gets the event while it is the current one. The monitor
    /// may hear of the press, too.
    void click(Button& control, EventType up = EventType::leftMouseUp) {
        desktop.application.event = up;
        control.receive(up);
        desktop.application.event.reset();
        desktop.runLoop.drain();
    }
    void rightClick(Button& control) { click(control, EventType::rightMouseUp); }

    /// A press somewhere that the monitor hears of.
    void pressAt(Point place, EventType down = EventType::leftMouseDown) {
        desktop.displays.pointer = place;
        desktop.monitors.deliver(down);
        desktop.runLoop.drain();
    }

    void showLevel(float percent) {
        AppDelegate::showVolumeLevel(percent);
        desktop.runLoop.drain();
    }

    void pass(double seconds) { desktop.runLoop.advance(seconds); }

    [[nodiscard]] MenuItem& menuItem(const std::string& title) const {
        const auto& items = desktop.menus.shown->items;
        return **std::find_if(items.begin(), items.end(),
                              [&](const auto& one) { return one->title == title; });
    }

    /// What was done since the last call, in order.
    std::vector<std::string> take() { return std::exchange(actions, {}); }

    std::vector<std::string> actions;
    SimulatedDesktop desktop{
        [this](std::string_view kind, const std::string& detail) { act(kind, detail); }};
    std::shared_ptr<AppDelegate> delegate;

  private:
    void act(std::string_view kind, const std::string& detail) {
        actions.push_back(std::string(kind) + " " + detail);
    }
};

} // namespace quillon
