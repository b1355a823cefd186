#include "support/SwitcherBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Lines = std::vector<std::string>;

struct ThreeFingerPressTest : testing::Test, SwitcherBench {
    void SetUp() override { shared().set("WindowSwitcher_ThreeFingerGesture", true); }
    std::shared_ptr<WindowSwitcherManager> start() {
        shared().set("WindowSwitcher_IsEnabled", true);
        auto manager = startSwitcher();
        actions.clear();
        return manager;
    }
    [[nodiscard]] bool hasMouseTap() const {
        return desktop.events.hasTap(ThreeFingerPress::toolId);
    }
    [[nodiscard]] bool isArmed() const {
        return desktop.events.isArmedAt({0, 0}, desktop.displays.frames);
    }
};

TEST_F(ThreeFingerPressTest, ThreeFingersMakeAMiddleClick) {
    const auto manager = start();
    desktop.displays.pointer = {300, 850};
    touch(3);
    EXPECT_EQ(pressLeft(), Fate::consume);
    EXPECT_EQ(actions, Lines{"click 2 down 300 50"});
    EXPECT_EQ(button(EventType::leftMouseUp), Fate::pass) << "the release is not tapped";
    desktop.displays.pointer = {700, 100};
    desktop.runLoop.advance(0.009);
    EXPECT_EQ(actions.size(), 1U);
    desktop.runLoop.advance(0.001);
    EXPECT_EQ(actions, (Lines{"click 2 down 300 50", "click 2 up 300 50",
                              "log ✅ Middle mouse click simulated at (300.0, 50.0)"}));
}

TEST_F(ThreeFingerPressTest, ItsTapAsksForLeftPressesAlone) {
    const auto manager = start();
    EXPECT_EQ(desktop.events.eventsOfInterest(ThreeFingerPress::toolId), 1U << 1);
}

TEST_F(ThreeFingerPressTest, ItPostsAPressAndAReleaseOfAnOtherButton) {
    const auto manager = start();
    touch(3);
    pressLeft();
    desktop.runLoop.advance(0.01);
    EXPECT_EQ(desktop.events.postedButtons(), (std::vector{EventType{25}, EventType{26}}));
}

TEST_F(ThreeFingerPressTest, AnyOtherNumberOfFingersPasses) {
    const auto manager = start();
    for (const int contacts : {0, 1, 2, 4, 5, 11}) {
        touch(contacts);
        EXPECT_EQ(pressLeft(), Fate::pass) << contacts;
    }
    EXPECT_TRUE(actions.empty());
}

TEST_F(ThreeFingerPressTest, OtherButtonsAreNotItsBusiness) {
    const auto manager = start();
    touch(3);
    for (const EventType type : {EventType::leftMouseUp, EventType::rightMouseDown,
                                 EventType::otherMouseDown, EventType::otherMouseUp}) {
        EXPECT_EQ(button(type), Fate::pass);
    }
    FieldEvent event;
    EXPECT_EQ(ThreeFingerPress::tapCallback(EventType::leftMouseDown, &event, nullptr), &event)
        << "no context";
}

TEST_F(ThreeFingerPressTest, FlagIsReadAtEachPressAndTheTapAtEachStart) {
    const auto manager = start();
    touch(3);
    manager->setThreeFingerGestureEnabled(false);
    EXPECT_TRUE(hasMouseTap());
    EXPECT_EQ(pressLeft(), Fate::pass);
    manager->setThreeFingerGestureEnabled(true);
    EXPECT_EQ(pressLeft(), Fate::consume);
    manager->setThreeFingerGestureEnabled(false);
    manager->startMonitoring();
    EXPECT_FALSE(hasMouseTap());
    EXPECT_FALSE(desktop.touchLibrary.isStarted());
    manager->setThreeFingerGestureEnabled(true);
    EXPECT_FALSE(hasMouseTap()) << "only at the next start";
    manager->startMonitoring();
    EXPECT_TRUE(hasMouseTap());
    EXPECT_EQ(pressLeft(), Fate::consume);
}

TEST_F(ThreeFingerPressTest, StoppingRemovesTapAndMonitor) {
    const auto manager = start();
    manager->stopMonitoring();
    EXPECT_FALSE(hasMouseTap());
    EXPECT_FALSE(desktop.touchLibrary.isStarted());
    touch(3);
    EXPECT_EQ(pressLeft(), Fate::pass);
}

TEST_F(ThreeFingerPressTest, WithoutALibraryPressesPass) {
    desktop.touchLibrary.isInstalled = false;
    const auto manager = start();
    EXPECT_TRUE(hasMouseTap());
    touch(3);
    EXPECT_EQ(pressLeft(), Fate::pass);
}

TEST_F(ThreeFingerPressTest, FrameThatIsStillOnItsWayDoesNotCount) {
    const auto manager = start();
    touch(2);
    const auto frame = desktop.touchLibrary.callback();
    EXPECT_EQ(pressLeft(), Fate::pass); // the third finger is down, its frame is not here yet
    frame(&desktop.touchLibrary, nullptr, 3, 0, 2);
    EXPECT_EQ(pressLeft(), Fate::consume);
}

TEST_F(ThreeFingerPressTest, RefusedTapIsSaidAndNotRetriedBeforeTheNextStart) {
    desktop.events.setGranting(false);
    shared().set("WindowSwitcher_IsEnabled", true);
    const auto manager = startSwitcher();
    EXPECT_EQ(count("log ⚠️ Failed to install mouse event tap for three-finger press"), 1);
    desktop.events.setGranting(true);
    manager->startMonitoring();
    EXPECT_TRUE(hasMouseTap());
}

TEST_F(ThreeFingerPressTest, LostTapIsNotRetriedBeforeTheNextStart) {
    const auto manager = start();
    desktop.events.drop(ThreeFingerPress::toolId);
    EXPECT_FALSE(manager->hasMouseTap());
    desktop.runLoop.advance(60);
    EXPECT_FALSE(hasMouseTap());
    manager->startMonitoring();
    EXPECT_TRUE(hasMouseTap());
}

TEST_F(ThreeFingerPressTest, WithoutAnEmptyEventTheWindowSystemsPlaceIsUsedAsItIs) {
    const auto manager = start();
    desktop.events.setMaking(false, true);
    desktop.displays.pointer = {300.5, 850};
    touch(3);
    pressLeft();
    desktop.runLoop.advance(0.01);
    EXPECT_EQ(actions, (Lines{"click 2 down 300.5 850", "click 2 up 300.5 850",
                              "log ✅ Middle mouse click simulated at (300.5, 850.0)"}));
}

TEST_F(ThreeFingerPressTest, EventsThatCannotBeMadeAreSkipped) {
    const auto manager = start();
    desktop.events.setMaking(true, false);
    touch(3);
    EXPECT_EQ(pressLeft(), Fate::consume);
    desktop.runLoop.advance(1);
    EXPECT_TRUE(actions.empty());
    desktop.events.setMaking(true, true);
    pressLeft();
    desktop.events.setMaking(true, false);
    desktop.runLoop.advance(1);
    EXPECT_EQ(actions, Lines{"click 2 down 720 450"});
}

TEST_F(ThreeFingerPressTest, WhatWentDownComesUpAlsoWhenTheToolIsGone) {
    auto manager = start();
    touch(3);
    pressLeft();
    manager.reset();
    desktop.runLoop.advance(0.01);
    EXPECT_EQ(count("click 2 up 720 450"), 1);
}

TEST_F(ThreeFingerPressTest, SaysThatItCouldConsumeOnlyWhileThreeFingersRest) {
    const auto manager = start();
    EXPECT_FALSE(isArmed());
    touch(3);
    EXPECT_TRUE(isArmed());
    touch(4);
    EXPECT_FALSE(isArmed());
    touch(3);
    manager->setThreeFingerGestureEnabled(false);
    EXPECT_FALSE(isArmed());
    manager->setThreeFingerGestureEnabled(true);
    EXPECT_TRUE(isArmed());
    manager->startMonitoring();
    desktop.runLoop.drain();
    EXPECT_TRUE(isArmed()) << "the fingers still rest there";
}

} // namespace
} // namespace quillon
