// Start, stop, permission poll, health timer: the life cycle of the edge tools, shown on the
// desktop switcher.

#include "support/ToolBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct EdgeToolLifeCycle : testing::Test, ToolBench {
    void SetUp() override { store("Tool4LeftEdge", true); }
    int installs() { return count("tap install tool.desktopSwitcher"); }
    int removals() { return count("tap remove tool.desktopSwitcher"); }
};

TEST_F(EdgeToolLifeCycle, TrustAnswerArrivesOverTheMainQueue) {
    const auto manager = Tool4EdgesManager::create(desktop.platform);
    EXPECT_FALSE(manager->hasAccessibilityPermission());
    EXPECT_FALSE(hasTap());
    desktop.runLoop.drain();
    EXPECT_TRUE(manager->hasAccessibilityPermission());
    EXPECT_TRUE(hasTap());
}

TEST_F(EdgeToolLifeCycle, PollStartsTheToolWhenTrustComes) {
    desktop.accessibility.trusted = false;
    const auto manager = startTool();
    EXPECT_FALSE(hasTap());
    EXPECT_EQ(desktop.accessibility.queries, 1);
    advance(1.999);
    EXPECT_EQ(desktop.accessibility.queries, 1);
    advance(0.001);
    EXPECT_EQ(desktop.accessibility.queries, 2);
    desktop.accessibility.trusted = true;
    advance(2);
    EXPECT_TRUE(hasTap());
}

TEST_F(EdgeToolLifeCycle, PollEndsForGoodOnceTrusted) {
    const auto manager = startTool();
    const int queries = desktop.accessibility.queries;
    desktop.accessibility.trusted = false;
    advance(60);
    EXPECT_EQ(desktop.accessibility.queries, queries);
    EXPECT_TRUE(manager->hasAccessibilityPermission()) << "a withdrawal is not noticed";
    EXPECT_TRUE(hasTap());
    EXPECT_EQ(desktop.runLoop.timerCount(), 1U) << "the health timer alone";
}

TEST_F(EdgeToolLifeCycle, DisabledToolLearnsOfTrustButDoesNotStart) {
    store("Tool4EnabledState", false);
    const auto manager = startTool();
    EXPECT_TRUE(manager->hasAccessibilityPermission());
    EXPECT_FALSE(hasTap());
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U) << "idle means no timers";
    manager->setIsEnabled(true);
    EXPECT_TRUE(hasTap());
}

TEST_F(EdgeToolLifeCycle, StartWithoutTrustDoesNothing) {
    desktop.accessibility.trusted = false;
    const auto manager = startTool();
    manager->startMonitoring();
    manager->setIsEnabled(true);
    EXPECT_FALSE(hasTap());
    EXPECT_EQ(installs(), 0);
    EXPECT_EQ(desktop.runLoop.timerCount(), 1U) << "the poll alone";
}

TEST_F(EdgeToolLifeCycle, RepeatedAnswerDoesNotRestart) {
    const auto manager = startTool();
    manager->applyPermissionResult(true);
    EXPECT_EQ(installs(), 1);
}

TEST_F(EdgeToolLifeCycle, AnswerThatWasWithdrawnAndComesAgainStartsOnlyAMissingTap) {
    const auto manager = startTool();
    manager->applyPermissionResult(false);
    EXPECT_TRUE(hasTap()) << "a withdrawal stops nothing";
    manager->applyPermissionResult(true);
    EXPECT_EQ(installs(), 1) << "the tap is still there";
}

TEST_F(EdgeToolLifeCycle, SwitchingOffStopsAndOnStarts) {
    const auto manager = startTool();
    manager->setIsEnabled(false);
    EXPECT_FALSE(hasTap());
    EXPECT_EQ(removals(), 1);
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
    manager->setIsEnabled(false);
    EXPECT_EQ(removals(), 1) << "nothing is there to remove";
    manager->setIsEnabled(true);
    EXPECT_TRUE(hasTap());
}

TEST_F(EdgeToolLifeCycle, SwitchingOnAgainRestarts) {
    const auto manager = startTool();
    manager->setIsEnabled(true);
    EXPECT_EQ(removals(), 1);
    EXPECT_EQ(installs(), 2);
    EXPECT_EQ(desktop.runLoop.timerCount(), 1U);
}

TEST_F(EdgeToolLifeCycle, StopForgetsTheNotches) {
    const auto manager = startTool();
    pointerAtLeftEdge();
    wheelTimes(3, 1);
    manager->stopMonitoring();
    EXPECT_EQ(manager->notches().line(), 0);
    manager->startMonitoring();
    wheelTimes(3, 1);
    EXPECT_EQ(count(previousScript), 0);
}

TEST_F(EdgeToolLifeCycle, RefusedTapIsNotRetriedByAnyTimer) {
    desktop.events.setGranting(false);
    const auto manager = startTool();
    EXPECT_FALSE(hasTap());
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
    desktop.events.setGranting(true);
    advance(60);
    EXPECT_FALSE(hasTap());
    manager->setIsEnabled(true);
    EXPECT_TRUE(hasTap());
    EXPECT_EQ(count("log "), 0);
}

TEST_F(EdgeToolLifeCycle, HealthTimerBringsAVanishedTapBack) {
    const auto manager = startTool();
    advance(3);
    desktop.events.drop(Tool4EdgesManager::toolId);
    EXPECT_FALSE(manager->hasEventTap());
    advance(1.999);
    EXPECT_FALSE(hasTap());
    advance(0.001);
    EXPECT_TRUE(hasTap());
    EXPECT_EQ(removals(), 0);
    desktop.events.drop(Tool4EdgesManager::toolId);
    advance(5);
    EXPECT_TRUE(hasTap()) << "the timer goes on";
}

TEST_F(EdgeToolLifeCycle, HealthTimerLeavesAWorkingTapAlone) {
    const auto manager = startTool();
    advance(60);
    EXPECT_EQ(installs(), 1);
}

TEST_F(EdgeToolLifeCycle, TapThatTheSystemDisabledIsEnabledByItsCallback) {
    const auto manager = startTool();
    pointerAtLeftEdge();
    for (const auto reason : {EventType::tapDisabledByTimeout, EventType::tapDisabledByUserInput}) {
        desktop.events.disableAll(reason);
        EXPECT_TRUE(desktop.events.isListening(Tool4EdgesManager::toolId));
    }
    EXPECT_EQ(wheel(1), Fate::consume);
    EXPECT_EQ(installs(), 1);
}

TEST_F(EdgeToolLifeCycle, NotchInFlightKeepsTheManagerAlive) {
    auto manager = startTool();
    manager->setScrollSensitivity(1);
    pointerAtLeftEdge();
    FieldEvent event;
    event.setDoubleValueField(EventField::scrollLineDeltaAxis1, 1);
    desktop.events.deliver(EventType::scrollWheel, event);
    const std::weak_ptr<Tool4EdgesManager> watched = manager;
    manager.reset();
    EXPECT_FALSE(watched.expired());
    desktop.runLoop.drain();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(count(previousScript), 0) << "the script's own queue holds it weakly";
}

TEST_F(EdgeToolLifeCycle, TeardownLeavesNothingBehind) {
    auto manager = startTool();
    manager.reset();
    EXPECT_FALSE(hasTap());
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);

    desktop.accessibility.trusted = false;
    manager = Tool4EdgesManager::create(desktop.platform);
    manager.reset();
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
    desktop.runLoop.drain(); // the answer on its way finds nobody
}

TEST_F(EdgeToolLifeCycle, SwitchedOffForNowStaysOffAndIsStoredAsItWas) {
    const auto manager = startTool();
    int signals = 0;
    QObject::connect(manager.get(), &EdgeToolManager::isEnabledChanged, [&] { ++signals; });
    manager->switchOffForNow();
    EXPECT_FALSE(hasTap());
    EXPECT_FALSE(manager->isEnabled());
    EXPECT_EQ(signals, 1);
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
    manager->setLeftEdgeEnabled(true);
    advance(60);
    EXPECT_FALSE(hasTap()) << "until somebody switches it on";
    EXPECT_EQ(desktop.userDefaults.standard().object("Tool4EnabledState"), std::nullopt)
        << "the next start goes by what was stored";
    manager->setIsEnabled(true);
    EXPECT_TRUE(hasTap());
}

} // namespace
} // namespace quillon
