#include "Platform/Linux/x11/CaughtPresses.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Kind = CaughtPress::Kind;

constexpr CaughtPress leftPress(std::uint16_t device, std::uint32_t time) {
    return {Kind::left, device, time};
}
constexpr CaughtPress wheel(std::uint16_t button, std::uint32_t time) {
    return {Kind::wheel, button, time};
}

TEST(CaughtPressesTest, EachIsClaimedOnce) {
    CaughtPresses presses;
    presses.consume(leftPress(4, 1000));
    presses.consume(leftPress(4, 1000));
    EXPECT_TRUE(presses.claim(leftPress(4, 1000)));
    EXPECT_TRUE(presses.claim(leftPress(4, 1000)));
    EXPECT_FALSE(presses.claim(leftPress(4, 1000)));
}

TEST(CaughtPressesTest, TheServersClockMayHaveGoneOnBetweenItsTwoMessages) {
    CaughtPresses presses;
    presses.consume(leftPress(4, 1001));
    EXPECT_TRUE(presses.claim(leftPress(4, 1000)));
    presses.consume(leftPress(4, 5)); // the clock has started anew
    EXPECT_TRUE(presses.claim(leftPress(4, 0xFFFFFFFF)));
}

TEST(CaughtPressesTest, OfAnotherDeviceOrAnotherTimeItIsAnotherPress) {
    CaughtPresses presses;
    presses.consume(leftPress(4, 1000));
    EXPECT_FALSE(presses.claim(leftPress(5, 1000)));
    EXPECT_FALSE(presses.claim(wheel(4, 1000)));
    EXPECT_FALSE(presses.claim(leftPress(4, 1030)));
    EXPECT_FALSE(presses.claim(leftPress(4, 970)));
    EXPECT_TRUE(presses.claim(leftPress(4, 1000)));
}

TEST(CaughtPressesTest, OfSeveralThatAreCloseItIsTheNearest) {
    CaughtPresses presses;
    for (const std::uint32_t time : {1006, 1001, 1012}) {
        presses.consume(wheel(4, time));
    }
    EXPECT_TRUE(presses.claim(wheel(4, 1000)));
    EXPECT_FALSE(presses.claim(wheel(4, 985))) << "which only the first would have been near to";
    EXPECT_TRUE(presses.claim(wheel(4, 1006)));
    EXPECT_TRUE(presses.claim(wheel(4, 1027)));
}

TEST(CaughtPressesTest, EachKindMayBeCaughtByItself) {
    CaughtPresses presses;
    EXPECT_FALSE(presses.mayHaveCaught(Kind::left));
    presses.setMayCatch(Kind::wheel);
    EXPECT_FALSE(presses.mayHaveCaught(Kind::left));
    EXPECT_TRUE(presses.mayHaveCaught(Kind::wheel));
}

TEST(CaughtPressesTest, ManyAreConsumedWhileNobodyAsks) {
    CaughtPresses presses;
    for (std::uint32_t time = 0; time < 100'000; time += 100) {
        presses.consume(leftPress(4, time));
    }
    EXPECT_TRUE(presses.claim(leftPress(4, 99'900)));
}

} // namespace
} // namespace quillon
