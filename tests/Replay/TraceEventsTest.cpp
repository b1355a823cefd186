#include "Replay/TraceEvents.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(TraceEventsTest, ButtonsHaveTheirOwnTypesOrShareThatOfTheOthers) {
    EXPECT_EQ(eventType(ButtonInput{MouseButton::left, true}), EventType::leftMouseDown);
    EXPECT_EQ(eventType(ButtonInput{MouseButton::left, false}), EventType::leftMouseUp);
    EXPECT_EQ(eventType(ButtonInput{MouseButton::right, true}), EventType::rightMouseDown);
    EXPECT_EQ(eventType(ButtonInput{MouseButton::right, false}), EventType::rightMouseUp);
    EXPECT_EQ(eventType(ButtonInput{MouseButton::middle, true}), EventType::otherMouseDown);
    EXPECT_EQ(eventType(ButtonInput{MouseButton::middle, false}), EventType::otherMouseUp);
}

TEST(TraceEventsTest, TapsAreToldWhyTheyWereDisabled) {
    EXPECT_EQ(eventType(TapsDisabled{false}), EventType::tapDisabledByTimeout);
    EXPECT_EQ(eventType(TapsDisabled{true}), EventType::tapDisabledByUserInput);
}

TEST(TraceEventsTest, EachPartOfAScrollIsAFieldOfItsOwn) {
    using enum EventField;
    ScrollInput scroll;
    scroll.lineDeltaAxis1 = 1;
    scroll.lineDeltaAxis2 = 2;
    scroll.fixedPointDeltaAxis1 = 3.5;
    scroll.fixedPointDeltaAxis2 = 4.5;
    scroll.pointDeltaAxis1 = 5.5;
    scroll.pointDeltaAxis2 = 6.5;
    scroll.isContinuous = true;
    scroll.phase = 7;
    scroll.momentumPhase = 8;

    const FieldEvent event = scrollEvent(scroll);

    EXPECT_EQ(event.doubleValueField(scrollLineDeltaAxis1), 1);
    EXPECT_EQ(event.doubleValueField(scrollLineDeltaAxis2), 2);
    EXPECT_EQ(event.doubleValueField(scrollFixedPointDeltaAxis1), 3.5);
    EXPECT_EQ(event.doubleValueField(scrollFixedPointDeltaAxis2), 4.5);
    EXPECT_EQ(event.doubleValueField(scrollPointDeltaAxis1), 5.5);
    EXPECT_EQ(event.doubleValueField(scrollPointDeltaAxis2), 6.5);
    EXPECT_EQ(event.integerValueField(scrollIsContinuous), 1);
    EXPECT_EQ(event.integerValueField(scrollPhase), 7);
    EXPECT_EQ(event.integerValueField(scrollMomentumPhase), 8);
    EXPECT_EQ(deltaText(event), "11=1 12=2 93=3.5 94=4.5 96=5.5 97=6.5");
}

TEST(TraceEventsTest, AnEmptyScrollHasNoField) {
    EXPECT_EQ(scrollEvent({}), FieldEvent());
    EXPECT_EQ(deltaText(scrollEvent({})), "11=0 12=0 93=0 94=0 96=0 97=0");
}

TEST(TraceEventsTest, NegativeZeroIsShownAsZero) {
    FieldEvent event;
    event.setDoubleValueField(EventField::scrollLineDeltaAxis1, -0.0);
    EXPECT_EQ(deltaText(event), "11=0 12=0 93=0 94=0 96=0 97=0");
}

} // namespace
} // namespace quillon
