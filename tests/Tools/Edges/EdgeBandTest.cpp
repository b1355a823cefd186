#include "Tools/Edges/EdgeBand.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillon {
namespace {

const std::vector<Rect> oneScreen{Rect{0, 0, 1440, 900}};

constexpr EdgeBand leftOnly{40, true, false, false, false};
constexpr EdgeBand rightOnly{40, false, true, false, false};
constexpr EdgeBand topOnly{40, false, false, true, false};
constexpr EdgeBand bottomOnly{40, false, false, false, true};

TEST(EdgeBand, IncludesItsInnerBoundary) {
    struct Row {
        EdgeBand band;
        Point inside;
        Point outside;
    };
    const std::vector<Row> rows{
        {leftOnly, {40, 450}, {40.01, 450}},
        {rightOnly, {1400, 450}, {1399.99, 450}},
        {topOnly, {720, 860}, {720, 859.99}},
        {bottomOnly, {720, 40}, {720, 40.01}},
    };
    for (const Row& row : rows) {
        EXPECT_TRUE(isInBand(row.band, row.inside, oneScreen));
        EXPECT_FALSE(isInBand(row.band, row.outside, oneScreen));
    }
}

TEST(EdgeBand, OnlyArmedEdgesCount) {
    EXPECT_FALSE(isInBand(leftOnly, {1439, 450}, oneScreen));
    EXPECT_FALSE(isInBand(leftOnly, {720, 900}, oneScreen));
    EXPECT_FALSE(isInBand(rightOnly, {0, 450}, oneScreen));
    EXPECT_FALSE(isInBand(topOnly, {720, 1}, oneScreen)) << "top is the larger y";
    EXPECT_FALSE(isInBand(bottomOnly, {720, 900}, oneScreen));
}

TEST(EdgeBand, NoEdgeArmedMeansNowhere) {
    const EdgeBand none{10'000, false, false, false, false};
    EXPECT_FALSE(none.isArmed());
    EXPECT_FALSE(isInBand(none, {0, 450}, oneScreen));
    EXPECT_TRUE(leftOnly.isArmed());
}

TEST(EdgeBand, WidthZeroIsTheFrameLineItself) {
    const EdgeBand line{0, true, false, true, false};
    EXPECT_TRUE(isInBand(line, {0, 450}, oneScreen));
    EXPECT_FALSE(isInBand(line, {0.5, 450}, oneScreen));
    EXPECT_TRUE(isInBand(line, {720, 900}, oneScreen));
}

TEST(EdgeBand, PointerOnNoScreenIsInNoBand) {
    EXPECT_FALSE(isInBand(leftOnly, {-1, 450}, oneScreen));
    EXPECT_FALSE(isInBand(rightOnly, {1440, 450}, oneScreen)) << "the far line is outside";
    EXPECT_FALSE(isInBand(leftOnly, {0, 450}, std::vector<Rect>{}));
}

TEST(EdgeBand, SharedEdgeIsAnEdgeOfEachScreen) {
    const std::vector<Rect> screens{Rect{0, 0, 1000, 800}, Rect{1000, -200, 600, 1000}};
    EXPECT_TRUE(isInBand(rightOnly, {970, 400}, screens));
    EXPECT_TRUE(isInBand(leftOnly, {1000, 400}, screens));
    EXPECT_TRUE(isInBand(leftOnly, {1040, -100}, screens));
    EXPECT_TRUE(isInBand(bottomOnly, {1300, -170}, screens));
    EXPECT_FALSE(isInBand(leftOnly, {970, 400}, screens));
}

} // namespace
} // namespace quillon
