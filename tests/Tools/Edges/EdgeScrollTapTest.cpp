// The tap callback itself, and what it tells platforms that must hold input to consume it.

#include "support/ToolBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct EdgeScrollTap : testing::Test, ToolBench {
    void SetUp() override { store("Tool4LeftEdge", true); }
    bool isArmedAt(Point place) { return desktop.events.isArmedAt(place, desktop.displays.frames); }
};

TEST_F(EdgeScrollTap, PassesWithoutAContext) {
    FieldEvent event;
    EXPECT_EQ(EdgeScrollManager::tapCallback(EventType::scrollWheel, &event, nullptr), &event);
}

TEST_F(EdgeScrollTap, AsksForScrollsAlone) {
    const auto manager = startTool();
    EXPECT_EQ(desktop.events.eventsOfInterest(Tool4EdgesManager::toolId), 1U << 22);
}

TEST_F(EdgeScrollTap, PassesOtherTypesInTheBand) {
    const auto manager = startTool();
    pointerAtLeftEdge();
    FieldEvent event;
    for (const auto type : {EventType::leftMouseDown, EventType::otherMouseDown}) {
        EXPECT_EQ(EdgeScrollManager::tapCallback(type, &event, manager.get()), &event);
    }
}

TEST_F(EdgeScrollTap, HandsTheNotchOverInsteadOfActingOnIt) {
    const auto manager = startTool();
    pointerAtLeftEdge();
    FieldEvent event;
    event.setDoubleValueField(EventField::scrollLineDeltaAxis1, 1);
    desktop.events.deliver(EventType::scrollWheel, event);
    EXPECT_EQ(manager->notches().line(), 0);
    desktop.runLoop.drain();
    EXPECT_EQ(manager->notches().line(), 1);
}

TEST_F(EdgeScrollTap, NeverRewrites) {
    const auto manager = startTool();
    EXPECT_EQ(wheel(1), Fate::pass);
}

TEST_F(EdgeScrollTap, IsArmedInTheBandAndNowhereElse) {
    const auto manager = startTool();
    EXPECT_TRUE(isArmedAt({40, 450}));
    EXPECT_FALSE(isArmedAt({40.01, 450}));
    EXPECT_FALSE(isArmedAt({-1, 450}));
}

TEST_F(EdgeScrollTap, ArmingFollowsTheSettings) {
    const auto manager = startTool();
    manager->setEdgeSensitivity(10);
    EXPECT_FALSE(isArmedAt({40, 450}));
    manager->setRightEdgeEnabled(true);
    EXPECT_TRUE(isArmedAt({1435, 450}));
    manager->setLeftEdgeEnabled(false);
    EXPECT_FALSE(isArmedAt({5, 450}));
    manager->setRightEdgeEnabled(false);
    EXPECT_FALSE(isArmedAt({1435, 450}));
}

TEST_F(EdgeScrollTap, NothingIsArmedWhileTheToolIsOff) {
    const auto manager = startTool();
    manager->setIsEnabled(false);
    EXPECT_FALSE(isArmedAt({5, 450}));
    manager->setTopEdgeEnabled(true);
    EXPECT_FALSE(isArmedAt({720, 899}));
    manager->setIsEnabled(true);
    EXPECT_TRUE(isArmedAt({720, 899})) << "a new tap knows the edges set meanwhile";
}

} // namespace
} // namespace quillon
