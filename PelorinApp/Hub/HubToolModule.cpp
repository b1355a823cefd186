#include "Hub/HubToolModule.h"

#include <algorithm>
#include <utility>

namespace quillon {

namespace {

constexpr auto windowSwitcherId = WindowSwitcherManager::toolId;
constexpr auto threeFingerId = ThreeFingerPress::toolId;

class SharedToolManagers final : public ToolManagers {
  public:
    WindowSwitcherManager& windowSwitcher() override { return WindowSwitcherManager::shared(); }
    MediaControlManager& mediaControl() override { return MediaControlManager::shared(); }
    VolumeControlManager& volumeControl() override { return VolumeControlManager::shared(); }
    Tool4EdgesManager& desktopSwitcher() override { return Tool4EdgesManager::shared(); }
    ScrollReverseManager& scrollReverse() override { return ScrollReverseManager::shared(); }
};

HubToolModule description(std::string_view id, std::string name, std::string icon,
                          std::string subtitle, std::string legacyEnabledKey, std::string screen) {
    return {.id = std::string(id),
            .name = std::move(name),
            .icon = std::move(icon),
            .subtitle = std::move(subtitle),
            .legacyEnabledKey = std::move(legacyEnabledKey),
            .makeView = [screen = std::move(screen)] { return screen; },
            .activate = [] {},
            .deactivate = [] {}};
}

/// Switches a manager on that serves several purposes or none yet.
void activate(EdgeToolManager& manager, bool anew) {
    manager.setIsEnabled(true);
    manager.restartIfNeeded(anew);
}

/// Switches the manager that two tools share off, unless it still serves the other.
void leaveToOther(WindowSwitcherManager& manager, bool otherIsOn) {
    if (otherIsOn) {
        manager.restartIfNeeded(true);
    } else {
        manager.setIsEnabled(false);
    }
}

void switchScrollReverse(ScrollReverseManager& manager, bool on) {
    manager.setIsEnabled(on);
    if (manager.isEnabled()) {
        manager.startMonitoring();
    } else {
        manager.stopMonitoring();
    }
}

} // namespace

ToolManagers& sharedToolManagers() {
    static SharedToolManagers managers;
    return managers;
}

std::vector<HubToolModule> hubToolDescriptions() {
    return {
        description(windowSwitcherId, "Window+", "square.and.pencil",
                    "Scroll near screen edges to cycle windows", "Tool1Enabled", "Tool1View"),
        description(MediaControlManager::toolId, "Media+", "slider.horizontal.3",
                    "Play/pause and track changes from edge clicks", "Tool2Enabled", "Tool2View"),
        description(VolumeControlManager::toolId, "Volume+", "speaker.wave.2.fill",
                    "Edge scrolling controls volume", "Tool5Enabled", "Tool5View"),
        description(threeFingerId, "Trackpad+", "bolt.fill", "3-finger press maps to middle click",
                    "Tool3Enabled", "Tool3View"),
        description(Tool4EdgesManager::toolId, "Desktop+", "star.fill",
                    "Scroll near edges to switch desktops", "Tool4Enabled", "Tool4View"),
        description(ScrollReverseManager::toolId, "Scroll+", "arrow.up.arrow.down",
                    "Flip scroll direction for trackpad and mouse independently", "", "Tool6View"),
    };
}

std::vector<HubToolModule> hubToolModules(ToolManagers& managers, const IsToolOn& isOn) {
    auto modules = hubToolDescriptions();
    const auto wire = [&modules](std::string_view id, std::function<void()> on,
                                 std::function<void()> off) {
        const auto module = std::ranges::find(modules, id, &HubToolModule::id);
        module->activate = std::move(on);
        module->deactivate = std::move(off);
    };
    wire(
        windowSwitcherId, [&managers] { activate(managers.windowSwitcher(), false); },
        [&managers, isOn] { leaveToOther(managers.windowSwitcher(), isOn(threeFingerId)); });
    wire(
        threeFingerId,
        [&managers] {
            managers.windowSwitcher().setThreeFingerGestureEnabled(true);
            activate(managers.windowSwitcher(), true);
        },
        [&managers, isOn] {
            managers.windowSwitcher().setThreeFingerGestureEnabled(false);
            leaveToOther(managers.windowSwitcher(), isOn(windowSwitcherId));
        });
    // Switching it on also starts it, and says so; a second start would say so again.
    wire(
        MediaControlManager::toolId, [&managers] { managers.mediaControl().setIsEnabled(true); },
        [&managers] { managers.mediaControl().setIsEnabled(false); });
    wire(
        VolumeControlManager::toolId, [&managers] { activate(managers.volumeControl(), false); },
        [&managers] { managers.volumeControl().setIsEnabled(false); });
    wire(
        Tool4EdgesManager::toolId, [&managers] { activate(managers.desktopSwitcher(), false); },
        [&managers] { managers.desktopSwitcher().setIsEnabled(false); });
    wire(
        ScrollReverseManager::toolId,
        [&managers] { switchScrollReverse(managers.scrollReverse(), true); },
        [&managers] { switchScrollReverse(managers.scrollReverse(), false); });
    return modules;
}

} // namespace quillon
