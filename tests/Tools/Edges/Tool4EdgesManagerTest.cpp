// The desktop switcher's settings, constants and actions.

#include "support/ToolBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Fate = ToolBench::Fate;

struct DesktopSwitcher : testing::Test, ToolBench {
    std::optional<DefaultsObject> stored(const char* key) {
        return desktop.userDefaults.standard().object(key);
    }
};

TEST_F(DesktopSwitcher, FreshInstallIsEnabledAndDoesNothing) {
    const auto manager = startTool();
    EXPECT_TRUE(manager->isEnabled());
    EXPECT_EQ(manager->edgeSensitivity(), 40.0);
    EXPECT_EQ(manager->scrollSensitivity(), 4.0);
    EXPECT_FALSE(manager->leftEdgeEnabled() || manager->rightEdgeEnabled() ||
                 manager->topEdgeEnabled() || manager->bottomEdgeEnabled());
    pointerAtLeftEdge();
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(wheel(1), Fate::pass);
    }
    EXPECT_EQ(count(previousScript), 0);
    EXPECT_EQ(desktop.userDefaults.standard().writes(), 0) << "reading settings writes none";
}

TEST_F(DesktopSwitcher, FourNotchesUpGoToThePreviousDesktopOnce) {
    store("Tool4LeftEdge", true);
    const auto manager = startTool();
    pointerAtLeftEdge();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(wheel(1), Fate::consume) << "also the notches that trigger nothing";
    }
    EXPECT_EQ(count(previousScript), 0);
    wheel(1);
    EXPECT_EQ(count(previousScript), 1);
    EXPECT_EQ(manager->notches().line(), 0);
    EXPECT_EQ(count(nextScript), 0);
}

TEST_F(DesktopSwitcher, FourNotchesDownGoToTheNextDesktopOnce) {
    store("Tool4LeftEdge", true);
    const auto manager = startTool();
    pointerAtLeftEdge();
    wheelTimes(4, -1);
    EXPECT_EQ(count(nextScript), 1);
    EXPECT_EQ(count(previousScript), 0);
}

TEST_F(DesktopSwitcher, HorizontalScrollingCountsLikewise) {
    store("Tool4LeftEdge", true);
    const auto manager = startTool();
    pointerAtLeftEdge();
    for (int i = 0; i < 4; ++i) {
        wheel(0, 1);
    }
    EXPECT_EQ(count(previousScript), 1);
    for (int i = 0; i < 4; ++i) {
        wheel(0, -1);
    }
    EXPECT_EQ(count(nextScript), 1);
}

TEST_F(DesktopSwitcher, DiagonalThatCancelsOutIsConsumedAndCountsNothing) {
    store("Tool4LeftEdge", true);
    store("Tool4ScrollSensitivity", 1.0);
    const auto manager = startTool();
    pointerAtLeftEdge();
    EXPECT_EQ(wheel(1, -1), Fate::consume);
    EXPECT_EQ(manager->notches().line(), 0);
    EXPECT_EQ(count(previousScript) + count(nextScript), 0);
}

TEST_F(DesktopSwitcher, EveryEdgeHasItsOwnKey) {
    const std::vector<std::pair<const char*, Point>> edges{{"Tool4LeftEdge", {5, 450}},
                                                           {"Tool4RightEdge", {1435, 450}},
                                                           {"Tool4TopEdge", {720, 895}},
                                                           {"Tool4BottomEdge", {720, 5}}};
    for (const auto& [armed, unused] : edges) {
        SimulatedUserDefaults& defaults = desktop.userDefaults.standard();
        for (const auto& [key, place] : edges) {
            defaults.set(key, key == armed);
        }
        const auto manager = startTool();
        for (const auto& [key, place] : edges) {
            desktop.displays.pointer = place;
            EXPECT_EQ(wheel(1) == Fate::consume, key == armed) << armed << " " << key;
        }
    }
}

TEST_F(DesktopSwitcher, BandWidthZeroIsTheFrameLine) {
    store("Tool4LeftEdge", true);
    store("Tool4EdgeSensitivity", 0.0);
    const auto manager = startTool();
    desktop.displays.pointer = {0, 450};
    EXPECT_EQ(wheel(1), Fate::consume);
    desktop.displays.pointer = {0.5, 450};
    EXPECT_EQ(wheel(1), Fate::pass);
}

TEST_F(DesktopSwitcher, PointerOnNoScreenPasses) {
    store("Tool4LeftEdge", true);
    const auto manager = startTool();
    desktop.displays.pointer = {-5, 450};
    EXPECT_EQ(wheel(1), Fate::pass);
}

TEST_F(DesktopSwitcher, StoredSettingsAreRead) {
    store("Tool4EnabledState", false);
    store("Tool4EdgeSensitivity", 12.5);
    store("Tool4ScrollSensitivity", 7.0);
    store("Tool4TopEdge", true);
    const auto manager = startTool();
    EXPECT_FALSE(manager->isEnabled());
    EXPECT_EQ(manager->edgeSensitivity(), 12.5);
    EXPECT_EQ(manager->scrollSensitivity(), 7.0);
    EXPECT_TRUE(manager->topEdgeEnabled());
    EXPECT_FALSE(hasTap());
}

TEST_F(DesktopSwitcher, WronglyTypedSettingGivesItsDefaultAndALine) {
    store("Tool4EdgeSensitivity", std::string("wide"));
    store("Tool4LeftEdge", 1.0);
    const auto manager = startTool();
    EXPECT_EQ(manager->edgeSensitivity(), 40.0);
    EXPECT_FALSE(manager->leftEdgeEnabled());
    EXPECT_EQ(std::count_if(actions.begin(), actions.end(),
                            [](const std::string& a) { return a.starts_with("log "); }),
              2);
}

TEST_F(DesktopSwitcher, SensitivityIsStoredAsAWholeNumberOfOneToTen) {
    const auto manager = startTool();
    const std::vector<std::pair<double, double>> rows{{3.6, 4}, {0, 1},           {15, 10},
                                                      {2.5, 3}, {-4, 1},          {0.4, 1},
                                                      {7, 7},   {6.9995, 6.9995}, {6.998, 7}};
    for (const auto& [value, kept] : rows) {
        manager->setScrollSensitivity(value);
        EXPECT_EQ(manager->scrollSensitivity(), kept);
        EXPECT_EQ(stored("Tool4ScrollSensitivity"), DefaultsObject(kept));
    }
}

TEST_F(DesktopSwitcher, ThresholdIsReadAnewForEveryEvent) {
    store("Tool4LeftEdge", true);
    const auto manager = startTool();
    pointerAtLeftEdge();
    wheelTimes(2, 1);
    manager->setScrollSensitivity(3);
    wheel(1);
    EXPECT_EQ(count(previousScript), 1);
}

TEST_F(DesktopSwitcher, StoredThresholdIsRoundedOnUse) {
    store("Tool4LeftEdge", true);
    store("Tool4ScrollSensitivity", 2.5);
    const auto manager = startTool();
    pointerAtLeftEdge();
    wheelTimes(2, 1);
    EXPECT_EQ(count(previousScript), 0);
    wheel(1);
    EXPECT_EQ(count(previousScript), 1);
}

TEST_F(DesktopSwitcher, EveryChangeIsStoredUnderItsKey) {
    const auto manager = startTool();
    manager->setIsEnabled(false);
    manager->setEdgeSensitivity(1000);
    manager->setLeftEdgeEnabled(true);
    manager->setRightEdgeEnabled(true);
    manager->setTopEdgeEnabled(true);
    manager->setBottomEdgeEnabled(true);
    EXPECT_EQ(stored("Tool4EnabledState"), DefaultsObject(false));
    EXPECT_EQ(stored("Tool4EdgeSensitivity"), DefaultsObject(1000.0)) << "no clamping here";
    EXPECT_EQ(stored("Tool4LeftEdge"), DefaultsObject(true));
    EXPECT_EQ(stored("Tool4RightEdge"), DefaultsObject(true));
    EXPECT_EQ(stored("Tool4TopEdge"), DefaultsObject(true));
    EXPECT_EQ(stored("Tool4BottomEdge"), DefaultsObject(true));
}

TEST_F(DesktopSwitcher, ChangesAreSignalledOnceAndOnlyWhenTheyAreChanges) {
    const auto manager = startTool();
    int enabled = 0;
    int edge = 0;
    int width = 0;
    int notches = 0;
    using Edges = EdgeToolManager;
    auto* m = manager.get();
    QObject::connect(m, &Edges::isEnabledChanged, m, [&] { ++enabled; });
    QObject::connect(m, &Edges::leftEdgeEnabledChanged, m, [&] { ++edge; });
    QObject::connect(m, &Edges::edgeSensitivityChanged, m, [&] { ++width; });
    QObject::connect(m, &Tool4EdgesManager::scrollSensitivityChanged, m, [&] { ++notches; });
    manager->setIsEnabled(true);
    manager->setLeftEdgeEnabled(true);
    manager->setEdgeSensitivity(40);
    manager->setScrollSensitivity(3.6);
    EXPECT_EQ(enabled, 0);
    EXPECT_EQ(edge, 1);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(notches, 0);
    manager->setScrollSensitivity(5.2);
    EXPECT_EQ(notches, 1);
}

TEST_F(DesktopSwitcher, FailingScriptIsReportedAndItsNotchesAreSpent) {
    store("Tool4LeftEdge", true);
    const auto manager = startTool();
    pointerAtLeftEdge();
    desktop.scripting.failure = "not allowed";
    wheelTimes(4, 1);
    EXPECT_EQ(count("log AppleScript error: not allowed"), 1);
    EXPECT_EQ(manager->notches().line(), 0);
}

TEST_F(DesktopSwitcher, ScriptThatDoesNotCompileIsPassedOverInSilence) {
    store("Tool4LeftEdge", true);
    const auto manager = startTool();
    pointerAtLeftEdge();
    desktop.scripting.compiles = false;
    actions.clear();
    wheelTimes(4, 1);
    EXPECT_TRUE(actions.empty());
}

TEST_F(DesktopSwitcher, ActionsCanBeCalledDirectly) {
    const auto manager = startTool();
    manager->switchToPreviousDesktop();
    manager->switchToNextDesktop();
    EXPECT_EQ(count(previousScript), 0) << "not before the background queue runs";
    desktop.runLoop.drain();
    EXPECT_EQ(count(previousScript), 1);
    EXPECT_EQ(count(nextScript), 1);
}

TEST_F(DesktopSwitcher, QueuedScriptDoesNothingWhenTheManagerIsGone) {
    auto manager = startTool();
    manager->switchToNextDesktop();
    manager.reset();
    desktop.runLoop.drain();
    EXPECT_EQ(count(nextScript), 0);
}

} // namespace
} // namespace quillon
