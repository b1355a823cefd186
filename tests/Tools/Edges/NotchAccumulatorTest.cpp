#include "Tools/Edges/NotchAccumulator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace quillon {
namespace {

using Step = NotchAccumulator::Action;

ScrollSample line(double delta) { return {.lineDelta = delta}; }
ScrollSample precise(double delta) { return {.precise = true, .preciseDelta = delta}; }
ScrollSample ending(ScrollSample sample) {
    sample.endsGesture = true;
    return sample;
}

/// Adds line notches of these deltas and writes what each brought about: + - or a dot.
std::string run(NotchAccumulator& notches, std::initializer_list<double> deltas,
                std::int64_t threshold) {
    std::string actions;
    for (const double delta : deltas) {
        const Step action = notches.add(line(delta), threshold);
        actions += action == Step::positive ? '+' : action == Step::negative ? '-' : '.';
    }
    return actions;
}

TEST(ClampedSteps, RoundsHalvesAwayFromZeroAndClamps) {
    EXPECT_EQ(clampedSteps(0.4), 1);
    EXPECT_EQ(clampedSteps(2.5), 3);
    EXPECT_EQ(clampedSteps(2.49), 2);
    EXPECT_EQ(clampedSteps(12), 10);
    EXPECT_EQ(clampedSteps(-7), 1);
    EXPECT_EQ(clampedSteps(4), 4);
    EXPECT_EQ(clampedSteps(9e18), 10);
    EXPECT_EQ(clampedSteps(-0x1p63), 1) << "the smallest 64-bit integer still fits";
}

TEST(ClampedStepsDeathTest, StopsAtWhatIsNoInteger) {
    EXPECT_DEATH((void)clampedSteps(std::nan("")), "");
    EXPECT_DEATH((void)clampedSteps(std::numeric_limits<double>::infinity()), "");
    EXPECT_DEATH((void)clampedSteps(0x1p63), "");
    EXPECT_DEATH((void)clampedSteps(-1e19), "");
}

TEST(NotchAccumulator, FourNotchesTriggerOnceAndLeaveNothing) {
    NotchAccumulator notches;
    EXPECT_EQ(run(notches, {1, 1, 1, 1}, 4), "...+");
    EXPECT_EQ(notches.line(), 0);
    EXPECT_EQ(run(notches, {-1, -1, -1, -1}, 4), "...-");
    EXPECT_EQ(notches.line(), 0);
}

TEST(NotchAccumulator, NotchBackDelays) {
    NotchAccumulator notches;
    EXPECT_EQ(run(notches, {1, 1, -1, 1, 1}, 3), "....+");
    NotchAccumulator slower;
    EXPECT_EQ(run(slower, {1, 1, -1, 1, 1, 1}, 4), ".....+");
}

TEST(NotchAccumulator, AlternatingNeverTriggers) {
    NotchAccumulator notches;
    EXPECT_EQ(run(notches, {1, -1, 1, -1, 1, -1}, 2), "......");
}

TEST(NotchAccumulator, SizeNeverCounts) {
    NotchAccumulator notches;
    EXPECT_EQ(run(notches, {100, 0.03, 5}, 3), "..+");
}

TEST(NotchAccumulator, TooSmallAddsNothing) {
    NotchAccumulator notches;
    EXPECT_EQ(notches.add(line(0.02), 1), Step::none);
    EXPECT_EQ(notches.add(line(0), 1), Step::none);
    EXPECT_EQ(notches.add(precise(0.0001), 1), Step::none);
    EXPECT_EQ(notches.add(precise(-0.0001), 1), Step::none);
    EXPECT_EQ(notches.line(), 0);
    EXPECT_EQ(notches.precise(), 0);
    EXPECT_EQ(notches.add(precise(0.00011), 1), Step::positive);
}

TEST(NotchAccumulator, PreciseAndLineAreCountedApart) {
    NotchAccumulator notches;
    run(notches, {1}, 2);
    EXPECT_EQ(notches.add(precise(1), 2), Step::none);
    EXPECT_EQ(notches.add(precise(3), 2), Step::positive);
    EXPECT_EQ(notches.line(), 1);
}

TEST(NotchAccumulator, PreciseEventIgnoresItsLines) {
    NotchAccumulator notches;
    ScrollSample sample = precise(0);
    sample.lineDelta = 3;
    EXPECT_EQ(notches.add(sample, 1), Step::none);
    EXPECT_EQ(notches.line(), 0);
}

TEST(NotchAccumulator, LineEventWithoutLinesFallsThroughToThePreciseDelta) {
    NotchAccumulator notches;
    ScrollSample sample = line(0);
    sample.preciseDelta = 1;
    notches.add(sample, 5);
    EXPECT_EQ(notches.precise(), 1);
}

TEST(NotchAccumulator, AtMostOneActionPerEventAfterTheThresholdFell) {
    NotchAccumulator notches;
    run(notches, {1, 1, 1, 1, 1, 1, 1}, 10);
    EXPECT_EQ(run(notches, {1, 1, -1}, 2), "+++");
    EXPECT_EQ(notches.line(), 2);
}

TEST(NotchAccumulator, EndOfGestureForgetsBothCountsAfterTheAction) {
    NotchAccumulator notches;
    notches.add(precise(1), 4);
    run(notches, {1}, 4);
    EXPECT_EQ(notches.add(ending(precise(1)), 2), Step::positive);
    EXPECT_EQ(notches.precise(), 0);
    EXPECT_EQ(notches.line(), 0);
    run(notches, {1}, 4);
    EXPECT_EQ(notches.add(ending(line(0)), 4), Step::none);
    EXPECT_EQ(notches.line(), 0);
}

} // namespace
} // namespace quillon
