#include "Tools/Pointer/MediaControlManager.h"

#include "support/ToolBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Strings = std::vector<std::string>;

struct MediaControl : testing::Test, ToolBench {
    void SetUp() override {
        store("MediaControlLeftEdge", true);
        desktop.displays.pointer = {30, 450};
    }
    std::shared_ptr<MediaControlManager> startMedia() {
        auto manager = start<MediaControlManager>();
        actions.clear();
        return manager;
    }
    [[nodiscard]] bool hasMonitor() const {
        return desktop.monitors.hasMonitor(MediaControlManager::toolId);
    }
    void clickMiddle() { button(EventType::otherMouseDown, MouseButton::middle); }
    void clickMiddleAt(Point place) {
        desktop.displays.pointer = place;
        clickMiddle();
    }
    void clicks(int times) {
        for (int i = 0; i < times; ++i) {
            advance(0.1);
            clickMiddle();
        }
    }
    /// The keys that this many clicks lead to.
    Strings keysOf(int times) {
        clicks(times);
        advance(1);
        return take("key");
    }
};

TEST_F(MediaControl, ClicksAreCounted) {
    const auto manager = startMedia();
    EXPECT_EQ(keysOf(1), Strings{"16"});
    EXPECT_EQ(keysOf(2), Strings{"17"});
    EXPECT_EQ(keysOf(3), Strings{"18"});
    EXPECT_EQ(keysOf(4), Strings{});
    EXPECT_EQ(keysOf(1), Strings{"16"}) << "and forgotten";
}

TEST_F(MediaControl, ItsMonitorAsksForPressesOfTheButtonsThatAreOn) {
    const auto maskWith = [this](bool middle, bool left) {
        store("MediaControlMiddleButton", middle);
        store("MediaControlLeftButton", left);
        const auto manager = startMedia();
        return desktop.monitors.mask(MediaControlManager::toolId);
    };
    EXPECT_EQ(maskWith(true, false), 1U << 25);
    EXPECT_EQ(maskWith(false, true), 1U << 1);
    EXPECT_EQ(maskWith(true, true), 1U << 25 | 1U << 1);
    EXPECT_EQ(maskWith(false, false), 0U);
}

TEST_F(MediaControl, SaysWhatItDoes) {
    const auto manager = startMedia();
    clicks(2);
    advance(0.3);
    EXPECT_EQ(
        take("log"),
        (Strings{"🖱️ Media Control: Middle click detected at (30.0, 450.0)",
                 "🎯 Edge check - Left: true, Right: false, Top: false, Bottom: false",
                 "📊 Click count: 1",
                 "🖱️ Media Control: Middle click detected at (30.0, 450.0)",
                 "🎯 Edge check - Left: true, Right: false, Top: false, Bottom: false",
                 "📊 Click count: 2", "🎵 Media Control: 2 click(s) detected", "⏭️ Next Track"}));
    clicks(1);
    advance(0.3);
    EXPECT_EQ(take("log").back(), "⏯️ Toggle Play/Pause");
    clicks(3);
    advance(0.3);
    EXPECT_EQ(take("log").back(), "⏮️ Previous Track");
    clicks(4);
    advance(0.3);
    EXPECT_EQ(take("log").back(), "🎵 Media Control: Ignoring 4 clicks");
}

TEST_F(MediaControl, EachClickRestartsTheWait) {
    const auto manager = startMedia();
    clickMiddle();
    advance(0.2);
    clickMiddle();
    advance(0.299999);
    EXPECT_TRUE(take("key").empty());
    advance(0.000001);
    EXPECT_EQ(take("key"), Strings{"17"});

    clickMiddle();
    advance(0.2);
    clickMiddle();
    advance(0.35);
    clickMiddle();
    advance(0.3);
    EXPECT_EQ(take("key"), (Strings{"17", "16"}));
}

TEST_F(MediaControl, TheSameClickToldTwiceCountsOnce) {
    const auto manager = startMedia();
    clickMiddle();
    advance(0.049999);
    clickMiddleAt({30.0 - 0.9, 450.9});
    EXPECT_EQ(take("log").back(), "🖱️ Media Control: Middle click detected at (29.1, 450.9)")
        << "dropped silently";
    advance(1);
    EXPECT_EQ(take("key"), Strings{"16"});
}

TEST_F(MediaControl, AClickElsewhereOrLaterIsAnother) {
    const auto manager = startMedia();
    clickMiddleAt({20, 450});
    clickMiddleAt({21, 450});
    clickMiddleAt({21, 451});
    advance(1);
    EXPECT_EQ(take("key"), Strings{"18"});
    clickMiddle();
    advance(0.05);
    clickMiddle();
    advance(1);
    EXPECT_EQ(take("key"), Strings{"17"});
}

TEST_F(MediaControl, ADroppedClickIsNotWhatTheNextIsComparedWith) {
    const auto manager = startMedia();
    clickMiddle();
    advance(0.03);
    clickMiddle(); // dropped
    advance(0.03);
    clickMiddle(); // 60 ms after the first
    advance(1);
    EXPECT_EQ(take("key"), Strings{"17"});
}

TEST_F(MediaControl, TheBandIncludesItsInnerBoundary) {
    store("MediaControlRightEdge", true);
    store("MediaControlTopEdge", true);
    store("MediaControlBottomEdge", true);
    const auto manager = startMedia();
    for (const Point place : {Point{30, 450}, Point{1410, 450}, Point{720, 870}, Point{720, 30}}) {
        clickMiddleAt(place);
        advance(1);
        EXPECT_EQ(take("key"), Strings{"16"}) << place.x;
    }
    for (const Point place :
         {Point{30.01, 450}, Point{1409.99, 450}, Point{720, 869.99}, Point{720, 30.01}}) {
        clickMiddleAt(place);
        EXPECT_EQ(take("log").back(), "⚠️ Media Control: Click not near any enabled edge");
        advance(1);
        EXPECT_TRUE(take("key").empty()) << place.x;
    }
}

TEST_F(MediaControl, NamesEachEdgeThatItIsAt) {
    store("MediaControlTopEdge", true);
    store("MediaControlEdgeSensitivity", 10.0);
    const auto manager = startMedia();
    clickMiddleAt({1, 895});
    EXPECT_EQ(take("log").at(1),
              "🎯 Edge check - Left: true, Right: false, Top: true, Bottom: false");
    clickMiddleAt({1435, 2}); // not armed
    EXPECT_EQ(take("log").at(1),
              "🎯 Edge check - Left: false, Right: false, Top: false, Bottom: false");
}

TEST_F(MediaControl, AMissInTheMiddleChangesNoCount) {
    const auto manager = startMedia();
    clickMiddle();
    advance(0.1);
    clickMiddleAt({720, 450});
    advance(0.1);
    clickMiddleAt({5, 450});
    advance(1);
    EXPECT_EQ(take("key"), Strings{"17"});
}

TEST_F(MediaControl, APointerOnNoScreenIsAtNoEdge) {
    const auto manager = startMedia();
    clickMiddleAt({-1, 450});
    EXPECT_EQ(take("log"), (Strings{"🖱️ Media Control: Middle click detected at (-1.0, 450.0)",
                                    "⚠️ Media Control: No screen for pointer"}));
}

TEST_F(MediaControl, OnlyTheButtonsThatAreOnCount) {
    const auto manager = startMedia();
    button(EventType::leftMouseDown, MouseButton::left);
    EXPECT_TRUE(actions.empty()) << "not even listened to";
    EXPECT_EQ(manager->lastEventTime(), std::nullopt);
    button(EventType::otherMouseDown, static_cast<MouseButton>(3)); // a thumb button
    EXPECT_TRUE(take("log").empty());
    EXPECT_EQ(manager->lastEventTime(), Moment(0)) << "but noticed";
    button(EventType::otherMouseDown, MouseButton::left); // told as some other one
    EXPECT_TRUE(take("log").empty());

    manager->setLeftButtonEnabled(true);
    manager->setMiddleButtonEnabled(false);
    actions.clear();
    clickMiddle();
    EXPECT_TRUE(actions.empty());
    button(EventType::leftMouseDown, MouseButton::left);
    advance(1);
    EXPECT_EQ(take("key"), Strings{"16"});
}

TEST_F(MediaControl, ClicksGoOn) {
    const auto manager = startMedia();
    EXPECT_EQ(button(EventType::otherMouseDown, MouseButton::middle), Fate::pass);
}

TEST_F(MediaControl, StartingSaysHowItWent) {
    const auto manager = start<MediaControlManager>();
    EXPECT_EQ(take("log"), (Strings{"⚠️ Media Control: No accessibility permission",
                                    "🎵 Media Control: Starting monitoring...",
                                    "✅ Media Control: Event monitor successfully created"}));
    manager->setIsEnabled(false);
    EXPECT_EQ(take("log"), Strings{"🎵 Media Control: Stopped monitoring"});
    manager->setIsEnabled(false);
    EXPECT_TRUE(take("log").empty());
    desktop.monitors.granting = false;
    manager->setIsEnabled(true);
    EXPECT_EQ(take("log"), (Strings{"🎵 Media Control: Starting monitoring...",
                                    "❌ Media Control: Failed to create event monitor"}));
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U) << "nobody tries again by himself";
}

TEST_F(MediaControl, WithoutButtonsThereIsNothingToListenTo) {
    const auto manager = startMedia();
    manager->setMiddleButtonEnabled(false);
    EXPECT_EQ(take("log"), (Strings{"🎵 Media Control: Stopped monitoring",
                                    "🎵 Media Control: Starting monitoring...",
                                    "⚠️ Media Control: No buttons enabled"}));
    EXPECT_FALSE(hasMonitor());
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
    manager->setLeftButtonEnabled(true);
    EXPECT_TRUE(hasMonitor()) << "the start before has not kept the way blocked";
}

TEST_F(MediaControl, EveryRefusedStartLeavesTheWayFree) {
    desktop.accessibility.trusted = false;
    store("MediaControlMiddleButton", false);
    const auto manager = startMedia();
    manager->startMonitoring(); // no permission
    desktop.accessibility.trusted = true;
    advance(2); // no button
    desktop.monitors.granting = false;
    manager->setMiddleButtonEnabled(true); // no monitor
    EXPECT_FALSE(hasMonitor());
    desktop.monitors.granting = true;
    manager->startMonitoring();
    EXPECT_TRUE(hasMonitor());
}

TEST_F(MediaControl, HealthTickSaysAndRestores) {
    const auto manager = startMedia();
    const int queries = desktop.accessibility.queries;
    advance(5);
    EXPECT_EQ(take("log"), Strings{"✅ Media Control: Monitor is active"});
    desktop.monitors.drop(MediaControlManager::toolId);
    advance(5);
    EXPECT_EQ(take("log"), (Strings{"⚠️ Media Control: Event monitor is nil, restarting...",
                                    "🎵 Media Control: Starting monitoring...",
                                    "✅ Media Control: Event monitor successfully created"}));
    EXPECT_EQ(desktop.accessibility.queries, queries) << "nobody is asked for permission";
}

TEST_F(MediaControl, HealthTickLeavesTheQuestionOfPermissionToTheStart) {
    const auto manager = startMedia();
    desktop.monitors.drop(MediaControlManager::toolId);
    manager->applyPermissionResult(false);
    advance(5);
    EXPECT_EQ(take("log"), (Strings{"⚠️ Media Control: Event monitor is nil, restarting...",
                                    "⚠️ Media Control: No accessibility permission"}));
}

TEST_F(MediaControl, StartsWhenPermissionComes) {
    desktop.accessibility.trusted = false;
    const auto manager = startMedia();
    EXPECT_FALSE(hasMonitor());
    desktop.accessibility.trusted = true;
    advance(2);
    EXPECT_TRUE(hasMonitor());
    desktop.accessibility.trusted = false;
    advance(60);
    EXPECT_TRUE(manager->hasAccessibilityPermission()) << "the poll has ended";
}

TEST_F(MediaControl, ButtonsAreNotRestartedWhileOff) {
    const auto manager = startMedia();
    manager->setIsEnabled(false);
    actions.clear();
    manager->setLeftButtonEnabled(true);
    EXPECT_TRUE(actions.empty());
    EXPECT_FALSE(hasMonitor());
}

TEST_F(MediaControl, EdgesAreReadAtEachClick) {
    const auto manager = startMedia();
    take("tap");
    manager->setLeftEdgeEnabled(false);
    EXPECT_EQ(keysOf(1), Strings{});
    manager->setLeftEdgeEnabled(true);
    manager->setEdgeSensitivity(29);
    EXPECT_EQ(keysOf(1), Strings{});
    manager->setEdgeSensitivity(30);
    EXPECT_EQ(keysOf(1), Strings{"16"});
    EXPECT_TRUE(take("tap").empty());
}

TEST_F(MediaControl, ABurstThatHasBegunEndsAlsoWhenSwitchedOff) {
    const auto manager = startMedia();
    clicks(2);
    manager->setIsEnabled(false);
    advance(0.3);
    EXPECT_EQ(take("key"), Strings{"17"});
}

TEST_F(MediaControl, ABurstEndsWithTheManager) {
    auto manager = startMedia();
    clicks(2);
    manager.reset();
    advance(1);
    EXPECT_TRUE(take("key").empty());
}

TEST_F(MediaControl, AKeyThatCannotBeMadeIsNotPosted) {
    const auto manager = startMedia();
    desktop.events.setMakingSystemDefined(false);
    EXPECT_EQ(keysOf(1), Strings{});
}

TEST_F(MediaControl, SettingTheWallClockBackDoesNotTakeClicksForOne) {
    const auto manager = startMedia();
    clickMiddle();
    desktop.runLoop.stepClock(-3600);
    advance(0.1);
    clickMiddle();
    advance(1);
    EXPECT_EQ(take("key"), Strings{"17"});
}

TEST_F(MediaControl, SettingsAreReadAndWrittenUnderTheirKeys) {
    store("MediaControlEnabled", false);
    store("MediaControlEdgeSensitivity", 12.5);
    store("MediaControlMiddleButton", false);
    store("MediaControlLeftButton", true);
    store("MediaControlTopEdge", true);
    const auto manager = startMedia();
    EXPECT_FALSE(manager->isEnabled());
    EXPECT_EQ(manager->edgeSensitivity(), 12.5);
    EXPECT_FALSE(manager->middleButtonEnabled());
    EXPECT_TRUE(manager->leftButtonEnabled());
    EXPECT_TRUE(manager->topEdgeEnabled());

    manager->setIsEnabled(true);
    manager->setEdgeSensitivity(99);
    manager->setMiddleButtonEnabled(true);
    manager->setLeftButtonEnabled(false);
    manager->setBottomEdgeEnabled(true);
    manager->setRightEdgeEnabled(true);
    const auto& defaults = desktop.userDefaults.standard();
    EXPECT_EQ(defaults.object("MediaControlEnabled"), DefaultsObject(true));
    EXPECT_EQ(defaults.object("MediaControlEdgeSensitivity"), DefaultsObject(99.0));
    EXPECT_EQ(defaults.object("MediaControlMiddleButton"), DefaultsObject(true));
    EXPECT_EQ(defaults.object("MediaControlLeftButton"), DefaultsObject(false));
    EXPECT_EQ(defaults.object("MediaControlBottomEdge"), DefaultsObject(true));
    EXPECT_EQ(defaults.object("MediaControlRightEdge"), DefaultsObject(true));
}

TEST(MediaControlDefaults, AFreshOneIsOnWithTheMiddleButtonAndNothingArmed) {
    ToolBench bench;
    bench.store("MediaControlEdgeSensitivity", std::string("wide"));
    const auto manager = bench.start<MediaControlManager>();
    EXPECT_TRUE(manager->isEnabled());
    EXPECT_EQ(manager->edgeSensitivity(), 30);
    EXPECT_TRUE(manager->middleButtonEnabled());
    EXPECT_FALSE(manager->leftButtonEnabled());
    EXPECT_FALSE(manager->leftEdgeEnabled() || manager->rightEdgeEnabled() ||
                 manager->topEdgeEnabled() || manager->bottomEdgeEnabled());
    const auto isArmed = [&] {
        return bench.desktop.monitors.isArmed(MediaControlManager::toolId);
    };
    EXPECT_FALSE(isArmed()) << "nothing need be woken by a click";
    manager->setTopEdgeEnabled(true);
    EXPECT_TRUE(isArmed());
    manager->setTopEdgeEnabled(false);
    EXPECT_FALSE(isArmed());
}

} // namespace
} // namespace quillon
