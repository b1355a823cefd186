#include "Platform/Linux/x11/NotchGatherer.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon {
namespace {

TEST(NotchGatherer, WholeNotchesCountAtOnce) {
    NotchGatherer gatherer;
    EXPECT_EQ(gatherer.add(1), 1);
    EXPECT_EQ(gatherer.add(-1), -1);
    EXPECT_EQ(gatherer.add(3), 3) << "a wheel that was turned further than it was asked";
}

TEST(NotchGatherer, FractionsAddUpToWholeOnes) {
    for (const int parts : {2, 3, 7, 8, 10, 120}) {
        NotchGatherer gatherer;
        for (int notch = 0; notch < 50; ++notch) {
            for (int part = 1; part < parts; ++part) {
                ASSERT_EQ(gatherer.add(-1.0 / parts), 0) << parts << ' ' << notch << ' ' << part;
            }
            ASSERT_EQ(gatherer.add(-1.0 / parts), -1) << parts << ' ' << notch;
        }
    }
}

TEST(NotchGatherer, RestIsKeptForTheNext) {
    NotchGatherer gatherer;
    EXPECT_EQ(gatherer.add(1.75), 1);
    EXPECT_EQ(gatherer.add(0.25), 1);
    EXPECT_EQ(gatherer.add(0.75), 0);
}

TEST(NotchGatherer, TurningRoundDropsTheRest) {
    NotchGatherer gatherer;
    EXPECT_EQ(gatherer.add(0.9), 0);
    EXPECT_EQ(gatherer.add(-0.5), 0);
    EXPECT_EQ(gatherer.add(-0.5), -1) << "not pushed back by what was gathered before";
    EXPECT_EQ(gatherer.add(-0.9), 0);
    EXPECT_EQ(gatherer.add(0), 0) << "standing still is no turn";
    EXPECT_EQ(gatherer.add(-0.1), -1);
}

TEST(NotchGatherer, WhatNoWheelReportsDoesNoHarm) {
    using Limits = std::numeric_limits<double>;
    NotchGatherer gatherer;
    EXPECT_EQ(gatherer.add(Limits::quiet_NaN()), 0);
    EXPECT_EQ(gatherer.add(Limits::infinity()), 0);
    EXPECT_EQ(gatherer.add(1e300), 100) << "a driver's fault is no endless row of actions";
    EXPECT_EQ(gatherer.add(0), 0) << "nor does the rest of it come later";
    EXPECT_EQ(gatherer.add(1), 1);
}

} // namespace
} // namespace quillon
