#include "Views/SliderScale.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quillon {
namespace {

constexpr double thumb = 16;
constexpr double track = 200;

struct SliderScaleTest : testing::Test {
    SliderScale scale;

    SliderScaleTest() { range(10, 100, 0); }

    void range(double lower, double upper, double step) {
        scale.lower = lower;
        scale.upper = upper;
        scale.step = step;
    }
    [[nodiscard]] double at(double x) const { return scale.valueAt(x, thumb, track); }
};

TEST_F(SliderScaleTest, TheThumbsCentreRunsAlongTheTrack) {
    EXPECT_EQ(at(8), 10);
    EXPECT_EQ(at(108), 55);
    EXPECT_EQ(at(208), 100);
    EXPECT_DOUBLE_EQ(at(9), 10.45);
}

TEST_F(SliderScaleTest, BeyondItsEndsThereIsNothing) {
    for (const double x : {7.9, 0.0, -1e9}) {
        EXPECT_EQ(at(x), 10);
    }
    for (const double x : {208.1, 1e9}) {
        EXPECT_EQ(at(x), 100);
    }
}

TEST_F(SliderScaleTest, WithoutATrackItIsTheLowerEnd) {
    for (const double none : {0.0, -5.0}) {
        EXPECT_EQ(scale.valueAt(500, thumb, none), 10);
    }
}

TEST_F(SliderScaleTest, WholeStepsCountFromTheLowerEnd) {
    range(1, 10, 1);
    EXPECT_EQ(scale.snapped(1.49), 1);
    EXPECT_EQ(scale.snapped(1.5), 2);
    EXPECT_EQ(scale.snapped(9.5), 10);
    range(1, 10, 2);
    EXPECT_EQ(scale.snapped(1.9), 1);
    EXPECT_EQ(scale.snapped(2), 3) << "half a step goes away from zero";
    EXPECT_EQ(scale.snapped(8.5), 9);
    range(1, 10, 4);
    EXPECT_EQ(scale.snapped(10), 9) << "the last whole step";
    range(2.5, 10, 3);
    EXPECT_EQ(scale.snapped(6), 5.5);
}

TEST_F(SliderScaleTest, FractionsOfAStepCountFromZero) {
    range(0.1, 1, 0.25);
    EXPECT_EQ(scale.snapped(0.3), 0.25);
    EXPECT_EQ(scale.snapped(0.375), 0.5);
    EXPECT_EQ(scale.snapped(0.12), 0.1) << "0, which is less than there is";
    EXPECT_EQ(scale.snapped(0.99), 1);
    range(1, 10, 1.5);
    EXPECT_EQ(scale.snapped(1), 1.5);
    EXPECT_EQ(scale.snapped(3.6), 3);
    EXPECT_EQ(scale.snapped(10), 10) << "10.5, which is more than there is";
}

TEST_F(SliderScaleTest, HalvesGoAwayFromZeroBelowZeroToo) {
    range(-10, 10, 0.5);
    EXPECT_EQ(scale.snapped(-1.25), -1.5);
    EXPECT_EQ(scale.snapped(1.25), 1.5);
    range(0, 10, 1);
    EXPECT_EQ(scale.snapped(-0.5), 0);
}

TEST_F(SliderScaleTest, AStepThatIsNoneLeavesEveryValue) {
    for (const double none : {0.0, -1.0}) {
        range(10, 100, none);
        EXPECT_EQ(scale.snapped(33.333), 33.333);
        EXPECT_EQ(scale.snapped(5), 10);
        EXPECT_EQ(scale.snapped(500), 100);
    }
}

TEST_F(SliderScaleTest, NumbersInPlainDigits) {
    EXPECT_EQ(SliderScale::whole(42.5), "43");
    EXPECT_EQ(SliderScale::whole(43.5), "44");
    EXPECT_EQ(SliderScale::whole(42.499), "42");
    EXPECT_EQ(SliderScale::whole(-2.5), "-3");
    EXPECT_EQ(SliderScale::whole(-0.2), "0");
    EXPECT_EQ(SliderScale::whole(1234567), "1234567");
    EXPECT_EQ(SliderScale::hundredths(40), "40.00");
    EXPECT_EQ(SliderScale::hundredths(55.678), "55.68");
}

} // namespace
} // namespace quillon
