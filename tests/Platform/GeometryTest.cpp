#include "Platform/Geometry.h"

#include <gtest/gtest.h>

#include <vector>

#include <array>

namespace quillon {
namespace {

TEST(Rect, ContainsItsTopLeftAndNotItsBottomRight) {
    const Rect screen{0, 0, 1440, 900};
    EXPECT_TRUE(screen.contains({0, 900}));
    EXPECT_TRUE(screen.contains({1439.99, 0.01}));
    EXPECT_FALSE(screen.contains({1440, 450}));
    EXPECT_FALSE(screen.contains({720, 0}));
    EXPECT_FALSE(screen.contains({-0.01, 450}));
    EXPECT_FALSE(screen.contains({720, 900.01}));
}

TEST(Rect, ScreensThatTouchShareNoPoint) {
    const std::array<Rect, 3> screens{Rect{0, 0, 100, 100}, Rect{100, 0, 100, 100},
                                      Rect{0, 100, 100, 100}};
    EXPECT_EQ(screenContaining({100, 50}, screens), &screens[1]);
    EXPECT_EQ(screenContaining({50, 100}, screens), &screens[0]);
    EXPECT_EQ(screenContaining({50, 100.5}, screens), &screens[2]);
    EXPECT_EQ(screenContaining({250, 50}, screens), nullptr);
}

TEST(Rect, FirstOfOverlappingScreensWins) {
    const std::array<Rect, 2> mirrored{Rect{0, 0, 100, 100}, Rect{0, 0, 50, 50}};
    EXPECT_EQ(screenContaining({10, 10}, mirrored), mirrored.data());
}

TEST(Geometry, FromTheTopLeftOfTheMainScreenAndBack) {
    const std::vector<Rect> screens{{0, 0, 1440, 900}, {1440, 100, 800, 600}};
    EXPECT_EQ(fromTopLeft({5, 900}, screens), (Point{5, 0}));
    EXPECT_EQ(fromTopLeft({1500, 650}, screens), (Point{1500, 250}));
    EXPECT_EQ(fromTopLeft(fromTopLeft({7, 8}, screens), screens), (Point{7, 8}));
}

} // namespace
} // namespace quillon
