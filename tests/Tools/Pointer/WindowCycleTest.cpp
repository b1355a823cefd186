// Which application comes forward, and how.

#include "support/SwitcherBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct WindowCycle : testing::Test, SwitcherBench {
    std::shared_ptr<WindowSwitcherManager> manager = startAtEdge();

    std::vector<std::string> next() {
        actions.clear();
        manager->switchToNextWindow();
        desktop.runLoop.drain();
        return take("activate");
    }
    std::vector<std::string> previous() {
        actions.clear();
        manager->switchToPreviousWindow();
        desktop.runLoop.drain();
        return take("activate");
    }
    std::vector<std::string> logOfNext() {
        actions.clear();
        manager->switchToNextWindow();
        return take("log");
    }
    void openThree() {
        open(1, "Alpha");
        open(2, "Beta");
        open(3, "Gamma");
    }
};

using Lines = std::vector<std::string>;

TEST_F(WindowCycle, NothingToSwitchTo) {
    EXPECT_EQ(logOfNext(), Lines{"⚠️ No windows to switch to"});
    EXPECT_EQ(manager->lastActivatedPID(), std::nullopt);
}

TEST_F(WindowCycle, OnlyOne) {
    open(1, "Alpha");
    EXPECT_EQ(logOfNext(), Lines{"ℹ️ Only one window available: Alpha"});
    EXPECT_EQ(manager->lastActivatedPID(), std::nullopt);
}

TEST_F(WindowCycle, NextGoesByNameAndAroundTheEnd) {
    openThree();
    EXPECT_EQ(next(), Lines{"2 options=3"});
    EXPECT_EQ(next(), Lines{"3 options=3"});
    EXPECT_EQ(next(), Lines{"1 options=3"});
    EXPECT_EQ(manager->lastActivatedPID(), 1);
}

TEST_F(WindowCycle, PreviousGoesTheOtherWay) {
    openThree();
    EXPECT_EQ(previous(), Lines{"3 options=3"});
    EXPECT_EQ(previous(), Lines{"2 options=3"});
    EXPECT_EQ(previous(), Lines{"1 options=3"});
}

TEST_F(WindowCycle, SaysWhereItGoes) {
    openThree();
    EXPECT_EQ(logOfNext(), Lines{"🔄 [2/3] Cycling from Alpha → Beta"});
    desktop.windows.setFront(99, std::nullopt);
    EXPECT_EQ(logOfNext(), Lines{"🔄 [3/3] Cycling from Unknown → Gamma"});
}

TEST_F(WindowCycle, GoesOnWhereItWasWhenTheFrontOneIsNoCandidate) {
    openThree();
    next(); // Beta, at index 1
    desktop.windows.setFront(50, "Excluded");
    EXPECT_EQ(next(), Lines{"3 options=3"});
    desktop.windows.setFront(50, "Excluded");
    EXPECT_EQ(previous(), Lines{"2 options=3"});
    desktop.windows.setFront(50, "Excluded");
    EXPECT_EQ(previous(), Lines{"1 options=3"});
    desktop.windows.setFront(50, "Excluded");
    EXPECT_EQ(previous(), Lines{"3 options=3"});
}

TEST_F(WindowCycle, IndexBeyondAShorterListWrapsAround) {
    openThree();
    next();
    next(); // Gamma, at index 2
    desktop.windows.close(3);
    desktop.windows.setFront(50, "Excluded");
    EXPECT_EQ(next(), Lines{"2 options=3"}) << "3 modulo 2";
}

TEST_F(WindowCycle, PublishesTheCandidatesFromTheMainQueue) {
    open(2, "Beta");
    open(1, "Alpha");
    int changes = 0;
    QObject::connect(manager.get(), &WindowSwitcherManager::detectedAppsChanged,
                     [&] { ++changes; });
    manager->switchToNextWindow();
    EXPECT_TRUE(manager->detectedApps().isEmpty());
    desktop.runLoop.drain();
    EXPECT_EQ(manager->detectedApps(), (QStringList{"Alpha", "Beta"}));
    desktop.windows.close(1);
    desktop.windows.close(2);
    next();
    EXPECT_TRUE(manager->detectedApps().isEmpty());
    EXPECT_EQ(changes, 2);
}

TEST_F(WindowCycle, SecondStageFocusesAndRaisesTheFirstWindow) {
    openThree();
    next();
    desktop.runLoop.advance(0.099);
    EXPECT_TRUE(actions.empty());
    desktop.runLoop.advance(0.001);
    EXPECT_EQ(actions, (Lines{"focus 2", "main 2", "raise 2", "activate 2 options=2",
                              "log ✅ Switched to: Beta"}));
}

TEST_F(WindowCycle, SecondStageOnlyActivatesWhereWindowsCannotBeRead) {
    openThree();
    desktop.windows.answersAssistance = false;
    next();
    desktop.runLoop.advance(0.1);
    EXPECT_EQ(actions, (Lines{"activate 2 options=2", "log ✅ Switched to: Beta (fallback)"}));
}

TEST_F(WindowCycle, ApplicationThatEndsBetweenTheStagesHarmsNothing) {
    openThree();
    next();
    desktop.windows.close(2);
    desktop.runLoop.advance(0.1);
    EXPECT_EQ(take("log"), Lines{"✅ Switched to: Beta (fallback)"});
    EXPECT_EQ(front(), 1);
}

TEST_F(WindowCycle, ApplicationThatEndsBeforeItIsActivatedIsSaid) {
    open(1, "Alpha");
    open(2, "Beta");
    react = [this](const std::string& action) {
        if (action.find("Cycling") != std::string::npos) {
            desktop.windows.close(2);
        }
    };
    EXPECT_EQ(logOfNext(),
              (Lines{"🔄 [2/2] Cycling from Alpha → Beta", "❌ Could not find app with PID: 2"}));
    EXPECT_EQ(manager->lastActivatedPID(), 2);
    desktop.runLoop.advance(1);
    EXPECT_TRUE(take("activate").empty());
}

TEST_F(WindowCycle, SecondStageDoesNothingOnceTheManagerIsGone) {
    openThree();
    next();
    manager.reset();
    desktop.runLoop.advance(1);
    EXPECT_TRUE(take("activate").empty());
}

TEST_F(WindowCycle, NotchUpGoesForwardAndDownBack) {
    openThree();
    actions.clear();
    EXPECT_EQ(wheel(1), Fate::consume);
    EXPECT_EQ(actions, (Lines{"log 🔼 Scroll UP/RIGHT detected near edge - Next window",
                              "log 🔄 [2/3] Cycling from Alpha → Beta", "activate 2 options=3"}));
    actions.clear();
    EXPECT_EQ(wheel(0, -3), Fate::consume);
    EXPECT_EQ(actions, (Lines{"log 🔽 Scroll DOWN/LEFT detected near edge - Previous window",
                              "log 🔄 [1/3] Cycling from Beta → Alpha", "activate 1 options=3"}));
}

TEST_F(WindowCycle, FourNotchesSwitchOnceAndLeaveNothingBehind) {
    openThree();
    manager->setEdgeScrollSteps(4);
    actions.clear();
    wheelTimes(3, 7);
    EXPECT_TRUE(take("activate").empty());
    wheel(1);
    EXPECT_EQ(take("activate"), Lines{"2 options=3"});
    EXPECT_EQ(manager->notches().line(), 0);
}

TEST_F(WindowCycle, AlternatingNotchesNeverSwitch) {
    openThree();
    manager->setEdgeScrollSteps(2);
    actions.clear();
    for (int i = 0; i < 20; ++i) {
        wheel(1);
        wheel(-1);
    }
    EXPECT_TRUE(take("activate").empty());
}

TEST_F(WindowCycle, OutsideTheBandEverythingPasses) {
    openThree();
    actions.clear();
    desktop.displays.pointer = {50.5, 450};
    EXPECT_EQ(wheel(1), Fate::pass);
    desktop.displays.pointer = {-1, 450};
    EXPECT_EQ(wheel(1), Fate::pass) << "on no screen";
    desktop.displays.pointer = {50, 450};
    EXPECT_EQ(wheel(1), Fate::consume) << "the band is 50 points wide";
    EXPECT_EQ(take("activate"), Lines{"2 options=3"});
}

} // namespace
} // namespace quillon
