// A program of its own, since it counts every allocation.

#include "Tools/Edges/ScrollReverseManager.h"
#include "support/AllocationCount.h"
#include "support/ToolBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct TapAllocation : testing::Test, ToolBench {
    std::size_t allocationsOfOneEvent(Point pointer) {
        store("Tool4LeftEdge", true);
        const auto manager = startTool();
        desktop.displays.pointer = pointer;
        FieldEvent event;
        event.setDoubleValueField(EventField::scrollLineDeltaAxis1, 1);
        const std::size_t before = allocationCount();
        EdgeScrollManager::tapCallback(EventType::scrollWheel, &event, manager.get());
        return allocationCount() - before;
    }
};

TEST_F(TapAllocation, NoneOutsideTheBand) { EXPECT_EQ(allocationsOfOneEvent({720, 450}), 0U); }

TEST_F(TapAllocation, OneHandOverInTheBand) { EXPECT_EQ(allocationsOfOneEvent({5, 450}), 1U); }

TEST_F(TapAllocation, NoneToReverse) {
    store("ScrollReverseMouse", true);
    const auto manager = start<ScrollReverseManager>();
    FieldEvent event;
    event.setDoubleValueField(EventField::scrollLineDeltaAxis1, 1);
    const std::size_t before = allocationCount();
    ScrollReverseManager::tapCallback(EventType::scrollWheel, &event, manager.get());
    EXPECT_EQ(allocationCount(), before);
    EXPECT_EQ(event.doubleValueField(EventField::scrollLineDeltaAxis1), -1);
}

} // namespace
} // namespace quillon
