#include "Platform/Linux/x11/CaughtPresses.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(CaughtPressesTest, EachIsClaimedOnce) {
    CaughtPresses presses;
    presses.consume(4, 1000);
    presses.consume(4, 1000);
    EXPECT_TRUE(presses.claim(4, 1000));
    EXPECT_TRUE(presses.claim(4, 1000));
    EXPECT_FALSE(presses.claim(4, 1000));
}

TEST(CaughtPressesTest, TheServersClockMayHaveGoneOnBetweenItsTwoMessages) {
    CaughtPresses presses;
    presses.consume(4, 1001);
    EXPECT_TRUE(presses.claim(4, 1000));
    presses.consume(4, 5); // the clock has started anew
    EXPECT_TRUE(presses.claim(4, 0xFFFFFFFF));
}

TEST(CaughtPressesTest, OfAnotherDeviceOrAnotherTimeItIsAnotherPress) {
    CaughtPresses presses;
    presses.consume(4, 1000);
    EXPECT_FALSE(presses.claim(5, 1000));
    EXPECT_FALSE(presses.claim(4, 1030));
    EXPECT_FALSE(presses.claim(4, 970));
    EXPECT_TRUE(presses.claim(4, 1000));
}

TEST(CaughtPressesTest, ManyAreConsumedWhileNobodyAsks) {
    CaughtPresses presses;
    for (std::uint32_t time = 0; time < 100'000; time += 100) {
        presses.consume(4, time);
    }
    EXPECT_TRUE(presses.claim(4, 99'900));
}

} // namespace
} // namespace quillon
