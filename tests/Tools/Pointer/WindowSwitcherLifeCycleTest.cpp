// Where the window switcher's life differs from that of the other edge tools.

#include "support/SwitcherBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* started =
    "✅ Window switcher monitoring started (scroll wheel + three-finger)";
constexpr const char* stopped = "🛑 Window switcher monitoring stopped";
constexpr const char* granted = "🔄 Window switcher: Permission granted, starting monitoring…";

struct WindowSwitcherLifeCycle : testing::Test, SwitcherBench {
    void SetUp() override { shared().set("WindowSwitcher_LeftEdge", true); }
    void enable() { shared().set("WindowSwitcher_IsEnabled", true); }
    [[nodiscard]] bool hasScrollTap() const {
        return desktop.events.hasTap(WindowSwitcherManager::toolId);
    }
    void advance(double seconds) { desktop.runLoop.advance(seconds); }
};

TEST_F(WindowSwitcherLifeCycle, StartsFromTheFirstAnswer) {
    enable();
    const auto manager = WindowSwitcherManager::create(desktop.platform);
    EXPECT_TRUE(actions.empty());
    desktop.runLoop.drain();
    EXPECT_EQ(actions, (Lines{std::string("log ") + granted, std::string("log ") + stopped,
                              "tap install tool.windowSwitcher", std::string("log ") + started}));
    EXPECT_EQ(desktop.runLoop.timerCount(), 1U) << "the health timer; the poll has ended";
}

TEST_F(WindowSwitcherLifeCycle, ItsScrollTapAsksForScrollsAlone) {
    enable();
    const auto manager = startSwitcher();
    EXPECT_EQ(desktop.events.eventsOfInterest(WindowSwitcherManager::toolId), 1U << 22);
}

TEST_F(WindowSwitcherLifeCycle, PollGoesOnWhileTheToolIsOff) {
    const auto manager = startSwitcher();
    EXPECT_TRUE(manager->hasAccessibilityPermission());
    EXPECT_TRUE(actions.empty());
    EXPECT_EQ(desktop.accessibility.queries, 1);
    advance(4);
    EXPECT_EQ(desktop.accessibility.queries, 3);
    // It has had the permission for long: no answer is news, and the poll never ends.
    manager->setIsEnabled(true);
    advance(4);
    EXPECT_EQ(desktop.accessibility.queries, 5);
    EXPECT_TRUE(hasScrollTap());
}

TEST_F(WindowSwitcherLifeCycle, PollEndsWithPermissionThatComesWhileItIsOn) {
    desktop.accessibility.trusted = false;
    enable();
    const auto manager = startSwitcher();
    EXPECT_TRUE(actions.empty());
    advance(4);
    desktop.accessibility.trusted = true;
    advance(2);
    EXPECT_EQ(take("log"), (Lines{granted, stopped, started}));
    const int queries = desktop.accessibility.queries;
    advance(20);
    EXPECT_EQ(desktop.accessibility.queries, queries);
}

TEST_F(WindowSwitcherLifeCycle, SwitchedOnWithoutPermissionItSaysSo) {
    desktop.accessibility.trusted = false;
    const auto manager = startSwitcher();
    manager->setIsEnabled(true);
    desktop.runLoop.drain();
    EXPECT_EQ(actions, Lines{"log ⚠️ Cannot start monitoring: no accessibility permission"});
    EXPECT_FALSE(hasScrollTap());
}

TEST_F(WindowSwitcherLifeCycle, SwitchedOnItStartsFromTheMainQueue) {
    const auto manager = startSwitcher();
    manager->setIsEnabled(true);
    EXPECT_FALSE(hasScrollTap());
    desktop.runLoop.drain();
    EXPECT_TRUE(hasScrollTap());
    manager->setIsEnabled(false);
    EXPECT_FALSE(hasScrollTap());
    EXPECT_EQ(take("log"), (Lines{stopped, started, stopped}));
}

TEST_F(WindowSwitcherLifeCycle, DirectStartDoesNotAskForPermission) {
    desktop.accessibility.trusted = false;
    const auto manager = startSwitcher();
    manager->startMonitoring();
    EXPECT_TRUE(hasScrollTap());
}

TEST_F(WindowSwitcherLifeCycle, RefusedTapIsSaidAndTriedAgainEveryFiveSeconds) {
    desktop.events.setGranting(false);
    enable();
    const auto manager = startSwitcher();
    EXPECT_EQ(take("log"),
              (Lines{granted, stopped, "⚠️ Failed to install scroll event tap", started}));
    desktop.events.setGranting(true);
    advance(4.999);
    EXPECT_FALSE(hasScrollTap());
    advance(0.001);
    EXPECT_TRUE(hasScrollTap());
    EXPECT_EQ(take("log"), (Lines{"⚠️ Window switcher: scroll tap missing, restarting…",
                                  stopped, started}));
}

TEST_F(WindowSwitcherLifeCycle, HealthTickReportsALivingTap) {
    enable();
    const auto manager = startSwitcher();
    actions.clear();
    advance(10);
    EXPECT_EQ(actions, Lines(2, "log ✅ Window switcher: monitor is active"));
}

TEST_F(WindowSwitcherLifeCycle, VanishedTapIsReplaced) {
    enable();
    const auto manager = startSwitcher();
    desktop.events.drop(WindowSwitcherManager::toolId);
    EXPECT_FALSE(hasScrollTap());
    advance(5);
    EXPECT_TRUE(hasScrollTap());
}

TEST_F(WindowSwitcherLifeCycle, HealthTickIsSilentOnceSwitchedOffForNow) {
    enable();
    const auto manager = startSwitcher();
    manager->switchOffForNow();
    actions.clear();
    advance(60);
    EXPECT_TRUE(actions.empty());
    EXPECT_EQ(shared().object("WindowSwitcher_IsEnabled"), DefaultsObject(true));
}

TEST_F(WindowSwitcherLifeCycle, StoppingKeepsTheNotches) {
    const auto manager = startAtEdge();
    manager->setEdgeScrollSteps(4);
    wheelTimes(3, 1);
    manager->setIsEnabled(false);
    EXPECT_EQ(manager->notches().line(), 3);
    manager->setIsEnabled(true);
    desktop.runLoop.drain();
    open(1, "A");
    open(2, "B");
    wheel(1);
    EXPECT_EQ(front(), 2);
}

TEST_F(WindowSwitcherLifeCycle, DisabledTapIsEnabledAgain) {
    enable();
    const auto manager = startSwitcher();
    desktop.events.disableAll(EventType::tapDisabledByTimeout);
    EXPECT_TRUE(desktop.events.isListening(WindowSwitcherManager::toolId));
}

TEST_F(WindowSwitcherLifeCycle, TearingDownStops) {
    enable();
    auto manager = startSwitcher();
    actions.clear();
    manager.reset();
    EXPECT_EQ(actions, (Lines{"tap remove tool.windowSwitcher", std::string("log ") + stopped}));
    EXPECT_EQ(desktop.runLoop.timerCount(), 0U);
}

} // namespace
} // namespace quillon
