#include "Platform/Linux/x11/TapQuestion.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(TapQuestion, ScrollIsAScrollWithItsFields) {
    const TapQuestion question = notchOfButton(4, {1, 2});
    EXPECT_EQ(typeOf(question), EventType::scrollWheel);
    EXPECT_EQ(locationOf(question), (Point{1, 2}));
    const FieldEvent event = eventOf(question, {3, 4});
    EXPECT_EQ(event.type(), EventType::scrollWheel);
    EXPECT_EQ(event.location(), (Point{3, 4}));
    EXPECT_EQ(event.doubleValueField(EventField::scrollLineDeltaAxis1), 1);
}

TEST(TapQuestion, LeftPressIsAPressOfTheLeftButton) {
    const TapQuestion question = LeftPress{{1, 2}};
    EXPECT_EQ(typeOf(question), EventType::leftMouseDown);
    EXPECT_EQ(locationOf(question), (Point{1, 2}));
    const FieldEvent event = eventOf(question, {3, 4});
    EXPECT_EQ(event.type(), EventType::leftMouseDown);
    EXPECT_EQ(event.button(), MouseButton::left);
    EXPECT_EQ(event.location(), (Point{3, 4}));
    EXPECT_EQ(event.doubleValueField(EventField::scrollLineDeltaAxis1), 0);
}

} // namespace
} // namespace quillon
