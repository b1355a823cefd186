#include "Platform/Linux/x11/MonitoredButton.h"

#include <gtest/gtest.h>

#include <utility>

namespace quillon {
namespace {

using enum EventType;

TEST(MonitoredButtonTest, ButtonsAreNumberedWithoutTheWheel) {
    constexpr std::pair<unsigned, unsigned> numbers[]{{1, 0}, {2, 2}, {3, 1},
                                                      {8, 3}, {9, 4}, {32, 27}};
    for (const auto& [button, expected] : numbers) {
        for (const bool isDown : {true, false}) {
            const auto event = monitoredButton(button, isDown);
            ASSERT_TRUE(event) << button;
            EXPECT_EQ(static_cast<unsigned>(event->buttonNumber), expected) << button;
        }
    }
}

TEST(MonitoredButtonTest, OnlyTwoOfThemHaveTypesOfTheirOwn) {
    EXPECT_EQ(monitoredButton(1, true)->type, leftMouseDown);
    EXPECT_EQ(monitoredButton(1, false)->type, leftMouseUp);
    EXPECT_EQ(monitoredButton(3, true)->type, rightMouseDown);
    EXPECT_EQ(monitoredButton(3, false)->type, rightMouseUp);
    for (const unsigned button : {2, 8, 20}) {
        EXPECT_EQ(monitoredButton(button, true)->type, otherMouseDown) << button;
        EXPECT_EQ(monitoredButton(button, false)->type, otherMouseUp) << button;
    }
}

TEST(MonitoredButtonTest, ANotchIsOneLineUpOrToTheRight) {
    struct {
        unsigned button;
        double x;
        double y;
    } constexpr notches[]{{4, 0, 1}, {5, 0, -1}, {6, -1, 0}, {7, 1, 0}};
    for (const auto& [button, x, y] : notches) {
        const auto event = monitoredButton(button, true);
        ASSERT_TRUE(event) << button;
        EXPECT_EQ(event->type, scrollWheel) << button;
        EXPECT_EQ(event->deltaX, x) << button;
        EXPECT_EQ(event->deltaY, y) << button;
        EXPECT_EQ(event->scrollingDeltaX, x) << button;
        EXPECT_EQ(event->scrollingDeltaY, y) << button;
        EXPECT_FALSE(monitoredButton(button, false)) << "the other half of the same notch";
    }
}

TEST(MonitoredButtonTest, OneThatIsSwitchedOffIsNone) {
    EXPECT_FALSE(monitoredButton(0, true));
    EXPECT_FALSE(monitoredButton(0, false));
}

} // namespace
} // namespace quillon
