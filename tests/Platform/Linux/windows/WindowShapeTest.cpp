#include "Platform/Linux/windows/WindowShape.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(RoundedRows, WithoutARadiusItIsTheWholeRectangle) {
    EXPECT_EQ(roundedRows({100, 50}, 0), (std::vector<QRect>{{0, 0, 100, 50}}));
}

TEST(RoundedRows, CornersOfFourPixels) {
    EXPECT_EQ(roundedRows({20, 12}, 4),
              (std::vector<QRect>{
                  {2, 0, 16, 1}, {1, 1, 18, 1}, {0, 2, 20, 8}, {1, 10, 18, 1}, {2, 11, 16, 1}}));
}

TEST(RoundedRows, TheFourCornersAreAlike) {
    const QSize size(360, 480);
    const auto rows = roundedRows(size, 12);
    ASSERT_GT(rows.size(), 10U);
    EXPECT_EQ(rows.front().y(), 0);
    EXPECT_EQ(rows.back().bottom(), 479);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const QRect& row = rows[i];
        const QRect& mirrored = rows[rows.size() - 1 - i];
        EXPECT_EQ(row.left(), 359 - row.right());
        EXPECT_EQ(row.left(), mirrored.left());
        EXPECT_EQ(row.top(), 479 - mirrored.bottom());
        if (i > 0) {
            EXPECT_EQ(row.top(), rows[i - 1].bottom() + 1);
        }
    }
}

TEST(RoundedRows, ARadiusIsAtMostHalfOfTheShorterSide) {
    const auto rows = roundedRows({10, 10}, 1000);
    EXPECT_EQ(rows, roundedRows({10, 10}, 5));
    EXPECT_EQ(rows.front().width(), 4);
}

} // namespace
} // namespace quillon
