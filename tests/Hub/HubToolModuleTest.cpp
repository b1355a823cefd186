#include "Hub/HubToolModule.h"

#include "Hub/OwnToolManagers.h"
#include "Platform/Simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>

#include <set>

namespace quillon {
namespace {

class Modules : public testing::Test {
  protected:
    void activate(std::string_view id) {
        on.emplace(id);
        module(id).activate();
        desktop.runLoop.drain();
    }
    void deactivate(std::string_view id) {
        on.erase(std::string(id));
        module(id).deactivate();
        desktop.runLoop.drain();
    }
    const HubToolModule& module(std::string_view id) {
        return *std::ranges::find(modules, id, &HubToolModule::id);
    }
    /// The answer to the first trust query has arrived.
    WindowSwitcherManager& switcher() {
        auto& manager = managers.windowSwitcher();
        desktop.runLoop.drain();
        return manager;
    }
    int count(const std::string& kind, const std::string& text) {
        return static_cast<int>(std::ranges::count(actions, kind + ' ' + text));
    }

    std::vector<std::string> actions;
    SimulatedDesktop desktop{[this](std::string_view kind, const std::string& text) {
        actions.push_back(std::string(kind) + ' ' + text);
    }};
    OwnToolManagers managers{desktop.platform};
    std::set<std::string, std::less<>> on;
    std::vector<HubToolModule> modules =
        hubToolModules(managers, [this](std::string_view id) { return on.contains(id); });
};

constexpr std::string_view window = "tool.windowSwitcher";
constexpr std::string_view trackpad = "tool.trackpadMiddleClick";

TEST_F(Modules, AreSixWithTheirNamesInOrder) {
    struct Row {
        const char* id;
        const char* name;
        const char* icon;
        const char* subtitle;
        const char* legacyEnabledKey;
        const char* screen;
    };
    const std::vector<Row> rows{
        {"tool.windowSwitcher", "Window+", "square.and.pencil",
         "Scroll near screen edges to cycle windows", "Tool1Enabled", "Tool1View"},
        {"tool.mediaControl", "Media+", "slider.horizontal.3",
         "Play/pause and track changes from edge clicks", "Tool2Enabled", "Tool2View"},
        {"tool.volumeControl", "Volume+", "speaker.wave.2.fill", "Edge scrolling controls volume",
         "Tool5Enabled", "Tool5View"},
        {"tool.trackpadMiddleClick", "Trackpad+", "bolt.fill",
         "3-finger press maps to middle click", "Tool3Enabled", "Tool3View"},
        {"tool.desktopSwitcher", "Desktop+", "star.fill", "Scroll near edges to switch desktops",
         "Tool4Enabled", "Tool4View"},
        {"tool.scrollReverse", "Scroll+", "arrow.up.arrow.down",
         "Flip scroll direction for trackpad and mouse independently", "", "Tool6View"},
    };
    for (const auto& list : {modules, hubToolDescriptions()}) {
        ASSERT_EQ(list.size(), rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(list[i].id, rows[i].id);
            EXPECT_EQ(list[i].name, rows[i].name);
            EXPECT_EQ(list[i].icon, rows[i].icon);
            EXPECT_EQ(list[i].subtitle, rows[i].subtitle);
            EXPECT_EQ(list[i].legacyEnabledKey, rows[i].legacyEnabledKey);
            EXPECT_EQ(list[i].makeView(), rows[i].screen);
        }
    }
}

TEST_F(Modules, SwitchTheirManagersAndPersistIt) {
    const std::vector<std::pair<std::string_view, std::string>> rows{
        {"tool.mediaControl", "MediaControlEnabled"},
        {"tool.volumeControl", "Tool5EnabledState"},
        {"tool.desktopSwitcher", "Tool4EnabledState"},
    };
    auto& media = managers.mediaControl();
    auto& volume = managers.volumeControl();
    auto& desktops = managers.desktopSwitcher();
    desktop.runLoop.drain();
    for (EdgeToolManager* manager :
         std::initializer_list<EdgeToolManager*>{&media, &volume, &desktops}) {
        manager->setIsEnabled(false);
    }
    for (const auto& [id, key] : rows) {
        activate(id);
    }
    EXPECT_TRUE(media.isEnabled());
    EXPECT_TRUE(volume.isEnabled());
    EXPECT_TRUE(desktops.isEnabled());
    for (const auto& id : {"tool.volumeControl", "tool.desktopSwitcher", "tool.mediaControl"}) {
        EXPECT_EQ(count("tap", std::string("install ") + id), 2) << id;
    }
    actions.clear();
    for (const auto& id : {"tool.volumeControl", "tool.desktopSwitcher", "tool.mediaControl"}) {
        deactivate(id);
        EXPECT_EQ(count("tap", std::string("remove ") + id), 1) << id;
    }
    EXPECT_FALSE(media.isEnabled());
    EXPECT_FALSE(volume.isEnabled());
    EXPECT_FALSE(desktops.isEnabled());
    for (const auto& [id, key] : rows) {
        EXPECT_EQ(desktop.userDefaults.standard().object(key), DefaultsObject(false)) << key;
    }
}

TEST_F(Modules, ScrollReverseIsAppliedAsItIsSwitched) {
    activate("tool.scrollReverse");
    EXPECT_TRUE(managers.scrollReverse().isEnabled());
    EXPECT_TRUE(managers.scrollReverse().hasEventTap());
    deactivate("tool.scrollReverse");
    EXPECT_FALSE(managers.scrollReverse().isEnabled());
    EXPECT_FALSE(managers.scrollReverse().hasEventTap());
}

TEST_F(Modules, TheTrackpadAloneTurnsTheSharedManagerOnAndOff) {
    switcher();
    activate(trackpad);
    EXPECT_TRUE(switcher().isEnabled());
    EXPECT_TRUE(switcher().threeFingerGestureEnabled());
    EXPECT_TRUE(switcher().hasMouseTap());
    deactivate(trackpad);
    EXPECT_FALSE(switcher().isEnabled());
    EXPECT_FALSE(switcher().threeFingerGestureEnabled());
    EXPECT_FALSE(switcher().hasMouseTap());
}

TEST_F(Modules, OfTheTwoThatShareAManagerEachLeavesItToTheOther) {
    for (const auto& [first, second] : {std::pair(window, trackpad), std::pair(trackpad, window)}) {
        switcher();
        activate(window);
        activate(trackpad);
        actions.clear();
        deactivate(first);
        EXPECT_TRUE(switcher().isEnabled()) << first;
        EXPECT_EQ(count("tap", "remove tool.windowSwitcher"), 1) << "started anew";
        EXPECT_EQ(count("tap", "install tool.windowSwitcher"), 1);
        EXPECT_EQ(switcher().hasMouseTap(), second == trackpad);
        EXPECT_EQ(switcher().threeFingerGestureEnabled(), second == trackpad);
        deactivate(second);
        EXPECT_FALSE(switcher().isEnabled()) << first;
    }
}

TEST_F(Modules, TheWindowSwitcherIsStartedAtOnce) {
    switcher();
    module(window).activate();
    EXPECT_EQ(count("tap", "install tool.windowSwitcher"), 1) << "before its own start comes";
}

TEST_F(Modules, WithoutPermissionTheyWaitForIt) {
    desktop.accessibility.trusted = false;
    desktop.events.setGranting(false);
    for (const auto& module : modules) {
        activate(module.id);
    }
    EXPECT_TRUE(switcher().isEnabled());
    EXPECT_TRUE(managers.volumeControl().isEnabled());
    EXPECT_FALSE(managers.scrollReverse().hasEventTap());
    deactivate(window);
    EXPECT_TRUE(switcher().isEnabled());
    activate(window);
    desktop.accessibility.trusted = true;
    desktop.events.setGranting(true);
    desktop.runLoop.advance(2);
    EXPECT_TRUE(managers.scrollReverse().hasEventTap());
    EXPECT_TRUE(switcher().hasMouseTap());
    EXPECT_TRUE(desktop.events.hasTap("tool.desktopSwitcher"));
}

} // namespace
} // namespace quillon
