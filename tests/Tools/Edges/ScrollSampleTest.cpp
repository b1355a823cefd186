#include "Tools/Edges/ScrollSample.h"

#include "Platform/FieldEvent.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

namespace quillon {
namespace {

ScrollSample classify(std::initializer_list<std::pair<int, double>> fields) {
    FieldEvent event;
    for (const auto& [field, value] : fields) {
        event.setDoubleValueField(static_cast<EventField>(field), value);
    }
    return classifyScroll(event);
}

TEST(ScrollSample, WheelWithoutAnyPreciseFieldIsALineScroll) {
    const auto sample = classify({{11, 1}});
    EXPECT_FALSE(sample.precise);
    EXPECT_EQ(sample.lineDelta, 1);
    EXPECT_EQ(sample.preciseDelta, 0);
    EXPECT_FALSE(sample.endsGesture);
}

TEST(ScrollSample, AnyPreciseFieldMakesItPrecise) {
    for (const int field : {88, 93, 94, 96, 97}) {
        EXPECT_TRUE(classify({{11, 1}, {field, 1}}).precise) << field;
        EXPECT_TRUE(classify({{11, 1}, {field, -1}}).precise) << field;
    }
    EXPECT_TRUE(classify({{97, 0.25}}).precise) << "a fraction counts";
}

TEST(ScrollSample, PointDeltaGoesBeforeFixedPointPerAxis) {
    EXPECT_EQ(classify({{93, 5}, {96, 2}}).preciseDelta, 2);
    EXPECT_EQ(classify({{93, 5}, {96, 2}, {94, 7}}).preciseDelta, 9);
    EXPECT_EQ(classify({{93, 5}, {94, 7}, {97, -3}}).preciseDelta, 2);
}

TEST(ScrollSample, AxesAreAdded) {
    EXPECT_EQ(classify({{11, 2}, {12, 3}}).lineDelta, 5);
    EXPECT_EQ(classify({{11, 1}, {12, -1}}).lineDelta, 0);
    EXPECT_EQ(classify({{96, 4}, {97, -4}}).preciseDelta, 0);
}

TEST(ScrollSample, EitherPhaseOfEightEndsTheGesture) {
    EXPECT_TRUE(classify({{99, 8}}).endsGesture);
    EXPECT_TRUE(classify({{123, 8}}).endsGesture);
    for (const double phase : {1.0, 2.0, 4.0, 7.0, 9.0, 16.0}) {
        EXPECT_FALSE(classify({{99, phase}, {123, phase}}).endsGesture) << phase;
    }
}

} // namespace
} // namespace quillon
