// What the volume tool makes of scrolls, and the points in which its life cycle differs.

#include "Tools/Edges/VolumeControlManager.h"
#include "Tools/Edges/Tool4EdgesManager.h"
#include "support/ToolBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Strings = std::vector<std::string>;
using enum EventField;

struct VolumeControl : testing::Test, ToolBench {
    void SetUp() override {
        store("Tool5LeftEdge", true);
        pointerAtLeftEdge();
    }
    std::shared_ptr<VolumeControlManager> startVolume() { return start<VolumeControlManager>(); }

    [[nodiscard]] bool hasMonitor() const {
        return desktop.monitors.hasMonitor(VolumeControlManager::toolId);
    }
    Fate scrollBy(std::initializer_list<std::pair<EventField, double>> fields) {
        FieldEvent event;
        for (const auto& [field, value] : fields) {
            event.setDoubleValueField(field, value);
        }
        advance(1);
        return scroll(event);
    }
};

TEST_F(VolumeControl, ItsMonitorAsksForScrollsAlone) {
    const auto manager = startVolume();
    EXPECT_EQ(desktop.monitors.mask(VolumeControlManager::toolId), 1U << 22);
}

TEST_F(VolumeControl, EveryScrollInTheBandIsOneStepAndGoesOn) {
    const auto manager = startVolume();
    EXPECT_EQ(scrollBy({{scrollLineDeltaAxis1, 30}}), Fate::pass);
    EXPECT_EQ(scrollBy({{scrollPointDeltaAxis2, -0.5}, {scrollIsContinuous, 1}}), Fate::pass);
    EXPECT_EQ(take("volume"), (Strings{"0.5025", "0.5"}));
}

TEST_F(VolumeControl, OutsideTheBandNothingHappens) {
    const auto manager = startVolume();
    desktop.displays.pointer = {41, 450};
    wheel(1);
    EXPECT_TRUE(take("volume").empty());
    desktop.displays.pointer = {40, 450};
    wheel(1);
    EXPECT_EQ(take("volume"), Strings{"0.5025"});
}

TEST_F(VolumeControl, TheSumOfBothAxesGivesTheDirection) {
    const auto manager = startVolume();
    scrollBy({{scrollPointDeltaAxis1, 3}, {scrollPointDeltaAxis2, -4}});
    EXPECT_EQ(take("volume"), Strings{"0.4975"});
    // What cancels in points counts by its lines.
    scrollBy({{scrollPointDeltaAxis1, 3}, {scrollPointDeltaAxis2, -3}, {scrollLineDeltaAxis1, 1}});
    EXPECT_EQ(take("volume"), Strings{"0.5"});
    scrollBy({{scrollPointDeltaAxis1, 0.000001}});
    scrollBy({{scrollLineDeltaAxis1, 1}, {scrollLineDeltaAxis2, -1}});
    scrollBy({});
    EXPECT_TRUE(take("volume").empty());
    scrollBy({{scrollPointDeltaAxis1, 0.0000011}});
    EXPECT_EQ(take("volume"), Strings{"0.5025"});
}

TEST_F(VolumeControl, AtMostOneStepIn85Milliseconds) {
    const auto manager = startVolume();
    wheel(1);
    advance(0.050);
    wheel(1);
    advance(0.034999);
    wheel(1);
    EXPECT_EQ(take("volume"), Strings{"0.5025"}) << "the others are dropped, not saved";
    advance(0.000001);
    wheel(1);
    EXPECT_EQ(take("volume"), Strings{"0.505"});
}

TEST_F(VolumeControl, A85MillisecondsAreEnoughAtAnyTime) {
    const auto manager = startVolume();
    for (int i = 0; i < 100; ++i) {
        wheel(i % 2 == 0 ? 1 : -1);
        advance(0.085);
    }
    EXPECT_EQ(take("volume").size(), 100U);
}

TEST_F(VolumeControl, ADroppedScrollDoesNotDelayTheNext) {
    const auto manager = startVolume();
    for (int i = 0; i < 18; ++i) { // every 10 ms
        wheel(1);
        advance(0.010);
    }
    EXPECT_EQ(take("volume").size(), 2U);
}

TEST_F(VolumeControl, WhatComesToNothingDoesNotCountForTheLimit) {
    const auto manager = startVolume();
    wheel(0);
    desktop.displays.pointer = {720, 450};
    wheel(1);
    pointerAtLeftEdge();
    wheel(1);
    EXPECT_EQ(take("volume"), Strings{"0.5025"});
}

TEST_F(VolumeControl, TheFirstScrollAfterAStopIsNeverTooSoon) {
    const auto manager = startVolume();
    wheel(1);
    manager->stopMonitoring();
    EXPECT_FALSE(hasMonitor());
    manager->startMonitoring();
    wheel(1);
    EXPECT_EQ(take("volume"), (Strings{"0.5025", "0.505"}));
}

TEST_F(VolumeControl, SettingTheWallClockBackDoesNotSilenceIt) {
    const auto manager = startVolume();
    wheel(1);
    desktop.runLoop.stepClock(-3600);
    advance(0.085);
    wheel(1);
    EXPECT_EQ(take("volume").size(), 2U);
}

TEST_F(VolumeControl, WhatTheDesktopSwitcherConsumesIsNotHeard) {
    store("Tool4LeftEdge", true);
    const auto manager = startVolume();
    const auto desktopSwitcher = startTool();
    EXPECT_EQ(wheel(1), Fate::consume);
    EXPECT_TRUE(take("volume").empty());
}

TEST_F(VolumeControl, SettingsAreReadAndWrittenUnderTheirKeys) {
    store("Tool5EnabledState", false);
    store("Tool5EdgeSensitivity", 12.5);
    store("Tool5VolumeSteps", 7.0);
    store("Tool5ScrollSensitivity", 3.0);
    store("Tool5BottomEdge", true);
    const auto manager = startVolume();
    EXPECT_FALSE(manager->isEnabled());
    EXPECT_EQ(manager->edgeSensitivity(), 12.5);
    EXPECT_EQ(manager->volumeSteps(), 7);
    EXPECT_EQ(manager->scrollSensitivity(), 3);
    EXPECT_TRUE(manager->leftEdgeEnabled());
    EXPECT_TRUE(manager->bottomEdgeEnabled());

    manager->setIsEnabled(true);
    manager->setEdgeSensitivity(500);
    manager->setVolumeSteps(12.3);
    manager->setScrollSensitivity(9);
    manager->setTopEdgeEnabled(true);
    manager->setRightEdgeEnabled(true);
    const auto& defaults = desktop.userDefaults.standard();
    EXPECT_EQ(defaults.object("Tool5EnabledState"), DefaultsObject(true));
    EXPECT_EQ(defaults.object("Tool5EdgeSensitivity"), DefaultsObject(500.0));
    EXPECT_EQ(defaults.object("Tool5VolumeSteps"), DefaultsObject(12.3)) << "as it is";
    EXPECT_EQ(defaults.object("Tool5ScrollSensitivity"), DefaultsObject(3.0)) << "read only";
    EXPECT_EQ(defaults.object("Tool5TopEdge"), DefaultsObject(true));
    EXPECT_EQ(defaults.object("Tool5RightEdge"), DefaultsObject(true));
}

TEST(VolumeControlDefaults, AFreshOneIsOnWithNothingArmed) {
    ToolBench bench;
    const auto manager = bench.start<VolumeControlManager>();
    EXPECT_TRUE(manager->isEnabled());
    EXPECT_EQ(manager->edgeSensitivity(), 40);
    EXPECT_EQ(manager->volumeSteps(), 1);
    EXPECT_EQ(manager->scrollSensitivity(), 1);
    EXPECT_FALSE(manager->leftEdgeEnabled() || manager->rightEdgeEnabled() ||
                 manager->topEdgeEnabled() || manager->bottomEdgeEnabled());
    EXPECT_TRUE(manager->hasEventMonitor());
    EXPECT_FALSE(bench.desktop.monitors.isArmed(VolumeControlManager::toolId))
        << "nothing need be woken by a scroll";
}

TEST_F(VolumeControl, IsToldOfScrollsOnlyWhileAnEdgeIsArmed) {
    const auto manager = startVolume();
    const auto isArmed = [&] { return desktop.monitors.isArmed(VolumeControlManager::toolId); };
    EXPECT_TRUE(isArmed());
    manager->setLeftEdgeEnabled(false);
    EXPECT_FALSE(isArmed());
    manager->setTopEdgeEnabled(true);
    EXPECT_TRUE(isArmed());
}

TEST_F(VolumeControl, HealthTimerTriesAgainWhatWasRefused) {
    desktop.monitors.granting = false;
    const auto manager = startVolume();
    EXPECT_FALSE(hasMonitor());
    desktop.monitors.granting = true;
    advance(4.999);
    EXPECT_FALSE(hasMonitor());
    advance(0.001);
    EXPECT_TRUE(hasMonitor());
}

TEST_F(VolumeControl, HealthTimerReplacesWhatHasVanished) {
    const auto manager = startVolume();
    advance(1);
    desktop.monitors.drop(VolumeControlManager::toolId);
    EXPECT_FALSE(manager->hasEventMonitor());
    advance(3.999);
    EXPECT_FALSE(manager->hasEventMonitor());
    advance(0.001);
    EXPECT_TRUE(manager->hasEventMonitor());
    EXPECT_EQ(desktop.monitors.count(), 1U);
}

TEST_F(VolumeControl, StartsWhenPermissionComesAndDoesNotStopWhenItGoes) {
    desktop.accessibility.trusted = false;
    const auto manager = startVolume();
    EXPECT_FALSE(hasMonitor());
    manager->setIsEnabled(true);
    EXPECT_FALSE(hasMonitor());
    desktop.accessibility.trusted = true;
    advance(2);
    EXPECT_TRUE(hasMonitor());
    manager->applyPermissionResult(false);
    EXPECT_TRUE(hasMonitor());
    EXPECT_FALSE(manager->hasAccessibilityPermission());
}

TEST_F(VolumeControl, RestartsWhenNeeded) {
    const auto manager = startVolume();
    EXPECT_EQ(take("tap"), Strings{"install tool.volumeControl"});
    manager->restartIfNeeded(false);
    EXPECT_TRUE(take("tap").empty());
    manager->restartIfNeeded(true);
    EXPECT_EQ(take("tap"), (Strings{"remove tool.volumeControl", "install tool.volumeControl"}));
    manager->stopMonitoring();
    take("tap");
    manager->restartIfNeeded(false);
    EXPECT_EQ(take("tap"), Strings{"install tool.volumeControl"});
    manager->setIsEnabled(false);
    take("tap");
    manager->restartIfNeeded(true);
    EXPECT_TRUE(take("tap").empty());
}

TEST_F(VolumeControl, WhatIsQueuedWhenTheManagerGoesIsNotDone) {
    auto manager = startVolume();
    FieldEvent event;
    event.setDoubleValueField(scrollLineDeltaAxis1, 1);
    desktop.monitors.deliver(EventType::scrollWheel, event);
    manager.reset();
    desktop.runLoop.drain();
    EXPECT_TRUE(take("volume").empty());
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
}

} // namespace
} // namespace quillon
