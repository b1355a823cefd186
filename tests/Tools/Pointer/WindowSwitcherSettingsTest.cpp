#include "support/SwitcherBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct WindowSwitcherSettings : testing::Test, SwitcherBench {
    double loadedSteps(DefaultsObject stored) {
        shared().set("WindowSwitcher_EdgeScrollSteps", std::move(stored));
        return startSwitcher()->edgeScrollSteps();
    }
    double stepsFromPoints(double points) {
        shared().set("WindowSwitcher_ScrollStepPoints", points);
        return startSwitcher()->edgeScrollSteps();
    }
    DefaultsObject stored(const char* key) { return shared().object(key).value(); }
};

TEST_F(WindowSwitcherSettings, Defaults) {
    const auto manager = startSwitcher();
    EXPECT_FALSE(manager->isEnabled());
    EXPECT_EQ(manager->edgeSensitivity(), 50);
    EXPECT_EQ(manager->edgeScrollSteps(), 4);
    EXPECT_FALSE(manager->leftEdgeEnabled());
    EXPECT_FALSE(manager->rightEdgeEnabled());
    EXPECT_FALSE(manager->topEdgeEnabled());
    EXPECT_FALSE(manager->bottomEdgeEnabled());
    EXPECT_FALSE(manager->threeFingerGestureEnabled());
    EXPECT_TRUE(manager->excludeXcode());
    EXPECT_TRUE(manager->excludedAppNames().isEmpty());
    EXPECT_TRUE(manager->detectedApps().isEmpty());
    EXPECT_EQ(shared().writes(), 0);
}

TEST_F(WindowSwitcherSettings, AreReadFromTheSharedSuite) {
    shared().set("WindowSwitcher_EdgeSensitivity", 12.5);
    shared().set("WindowSwitcher_RightEdge", true);
    shared().set("WindowSwitcher_TopEdge", true);
    shared().set("WindowSwitcher_BottomEdge", true);
    shared().set("WindowSwitcher_ThreeFingerGesture", true);
    shared().set("WindowSwitcher_ExcludeXcode", false);
    shared().set("WindowSwitcher_ExcludedAppNames", StringList{"Mail", "Ärger"});
    desktop.userDefaults.standard().set("WindowSwitcher_LeftEdge", true);
    const auto manager = startSwitcher();
    EXPECT_EQ(manager->edgeSensitivity(), 12.5);
    EXPECT_FALSE(manager->leftEdgeEnabled()) << "the standard store is another one";
    EXPECT_TRUE(manager->rightEdgeEnabled());
    EXPECT_TRUE(manager->topEdgeEnabled());
    EXPECT_TRUE(manager->bottomEdgeEnabled());
    EXPECT_TRUE(manager->threeFingerGestureEnabled());
    EXPECT_FALSE(manager->excludeXcode());
    EXPECT_EQ(manager->excludedAppNames(), (QStringList{"Mail", "Ärger"}));
}

TEST_F(WindowSwitcherSettings, FallBackToTheStandardStore) {
    desktop.userDefaults.refuseSuite(suite);
    store("WindowSwitcher_LeftEdge", true);
    const auto manager = startSwitcher();
    EXPECT_TRUE(manager->leftEdgeEnabled());
    manager->setTopEdgeEnabled(true);
    EXPECT_EQ(desktop.userDefaults.standard().object("WindowSwitcher_TopEdge"),
              DefaultsObject(true));
}

TEST_F(WindowSwitcherSettings, EveryChangeIsStoredAtOnceUnderItsKey) {
    const auto manager = startSwitcher();
    manager->setIsEnabled(true);
    manager->setEdgeSensitivity(7.25);
    manager->setEdgeScrollSteps(6);
    manager->setLeftEdgeEnabled(true);
    manager->setRightEdgeEnabled(true);
    manager->setTopEdgeEnabled(true);
    manager->setBottomEdgeEnabled(true);
    manager->setThreeFingerGestureEnabled(true);
    manager->setExcludeXcode(false);
    manager->setExcludedAppNames({"a", "b"});
    EXPECT_EQ(stored("WindowSwitcher_IsEnabled"), DefaultsObject(true));
    EXPECT_EQ(stored("WindowSwitcher_EdgeSensitivity"), DefaultsObject(7.25));
    EXPECT_EQ(stored("WindowSwitcher_EdgeScrollSteps"), DefaultsObject(6.0));
    EXPECT_EQ(stored("WindowSwitcher_LeftEdge"), DefaultsObject(true));
    EXPECT_EQ(stored("WindowSwitcher_RightEdge"), DefaultsObject(true));
    EXPECT_EQ(stored("WindowSwitcher_TopEdge"), DefaultsObject(true));
    EXPECT_EQ(stored("WindowSwitcher_BottomEdge"), DefaultsObject(true));
    EXPECT_EQ(stored("WindowSwitcher_ThreeFingerGesture"), DefaultsObject(true));
    EXPECT_EQ(stored("WindowSwitcher_ExcludeXcode"), DefaultsObject(false));
    EXPECT_EQ(stored("WindowSwitcher_ExcludedAppNames"), (DefaultsObject(StringList{"a", "b"})));
    EXPECT_EQ(shared().writes(), 10);
    manager->setExcludeXcode(false);
    manager->setExcludedAppNames({"a", "b"});
    manager->setThreeFingerGestureEnabled(true);
    EXPECT_EQ(shared().writes(), 13) << "also the same value again";
}

TEST_F(WindowSwitcherSettings, StepsAreWholeNumbersOfOneToTen) {
    const auto manager = startSwitcher();
    for (const auto& [given, kept] : {std::pair{3.6, 4.0}, {2.5, 3.0}, {0.0, 1.0}, {15.0, 10.0}}) {
        manager->setEdgeScrollSteps(given);
        EXPECT_EQ(manager->edgeScrollSteps(), kept);
        EXPECT_EQ(stored("WindowSwitcher_EdgeScrollSteps"), DefaultsObject(kept));
    }
}

TEST_F(WindowSwitcherSettings, StoredStepsAreLimitedButNotRounded) {
    EXPECT_EQ(loadedSteps(0.4), 1);
    EXPECT_EQ(loadedSteps(12.0), 10);
    EXPECT_EQ(loadedSteps(2.5), 2.5);
    EXPECT_EQ(loadedSteps(0.0), 1) << "a stored 0 is there";
}

TEST_F(WindowSwitcherSettings, StepsOfAnOlderReleaseCountWhereThereAreNoOthers) {
    EXPECT_EQ(stepsFromPoints(66), 3);
    EXPECT_EQ(stepsFromPoints(77), 4) << "3.5";
    EXPECT_EQ(stepsFromPoints(5), 1);
    EXPECT_EQ(stepsFromPoints(1000), 10);
    EXPECT_EQ(loadedSteps(2.0), 2) << "both: the newer";
    EXPECT_EQ(shared().object("WindowSwitcher_ScrollStepPoints"), DefaultsObject(1000.0))
        << "only read";
}

TEST_F(WindowSwitcherSettings, WronglyTypedCountsAsAbsentAndIsSaid) {
    shared().set("WindowSwitcher_ScrollStepPoints", 44.0);
    EXPECT_EQ(loadedSteps(std::string("6")), 2);
    shared().set("WindowSwitcher_ExcludedAppNames", UnsupportedObject{"[\"Mail\", 3]"});
    actions.clear();
    EXPECT_TRUE(startSwitcher()->excludedAppNames().isEmpty());
    EXPECT_EQ(
        count("log ⚠️ Setting WindowSwitcher_ExcludedAppNames should be a list of texts but "
              "is [\"Mail\", 3]; using the default"),
        1);
}

TEST_F(WindowSwitcherSettings, ThresholdIsRoundedWhereItIsUsed) {
    shared().set("WindowSwitcher_EdgeScrollSteps", 2.5);
    shared().set("WindowSwitcher_LeftEdge", true);
    shared().set("WindowSwitcher_IsEnabled", true);
    const auto manager = startSwitcher();
    pointerAtLeftEdge();
    open(1, "A");
    open(2, "B");
    wheelTimes(2, 1);
    EXPECT_EQ(front(), 1);
    wheel(1);
    EXPECT_EQ(front(), 2);
}

TEST_F(WindowSwitcherSettings, ExclusionTakesEffectAtTheNextSwitch) {
    const auto manager = startAtEdge();
    open(1, "A");
    open(2, "B");
    open(3, "C");
    manager->setExcludedAppNames({"b"});
    wheel(1);
    EXPECT_EQ(front(), 3);
}

} // namespace
} // namespace quillon
