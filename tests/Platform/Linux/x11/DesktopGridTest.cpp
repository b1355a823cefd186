#include "Platform/Linux/x11/DesktopGrid.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace quillon {
namespace {

using enum DesktopDirection;
using Layout = std::vector<std::uint32_t>;

DesktopGrid grid(std::uint32_t count, const Layout& layout = {}) {
    return DesktopGrid::fromLayout(count, layout);
}

/// The left and right neighbours of each desktop; -1 for none.
std::vector<std::pair<int, int>> neighbours(const DesktopGrid& g, RowEnd end) {
    const auto number = [](std::optional<std::uint32_t> desktop) {
        return desktop ? static_cast<int>(*desktop) : -1;
    };
    std::vector<std::pair<int, int>> all;
    for (std::uint32_t i = 0; i < g.count; ++i) {
        all.emplace_back(number(g.neighbour(i, left, end)), number(g.neighbour(i, right, end)));
    }
    return all;
}
using Pairs = std::vector<std::pair<int, int>>;

TEST(DesktopGrid, OneRowWithoutALayout) {
    EXPECT_EQ(neighbours(grid(4), RowEnd::stop), (Pairs{{-1, 1}, {0, 2}, {1, 3}, {2, -1}}));
    EXPECT_EQ(neighbours(grid(4), RowEnd::wrapRow), (Pairs{{3, 1}, {0, 2}, {1, 3}, {2, 0}}));
    EXPECT_EQ(neighbours(grid(4), RowEnd::wrapList), (Pairs{{3, 1}, {0, 2}, {1, 3}, {2, 0}}));
}

TEST(DesktopGrid, TwoRowsStayInTheirRow) {
    const auto two = grid(4, {0, 2, 2, 0});
    EXPECT_EQ(neighbours(two, RowEnd::stop), (Pairs{{-1, 1}, {0, -1}, {-1, 3}, {2, -1}}));
    EXPECT_EQ(neighbours(two, RowEnd::wrapRow), (Pairs{{1, 1}, {0, 0}, {3, 3}, {2, 2}}));
    EXPECT_EQ(neighbours(two, RowEnd::wrapList), (Pairs{{3, 1}, {0, 2}, {1, 3}, {2, 0}}));
}

TEST(DesktopGrid, NumberedDownTheColumns) {
    // 0 2
    // 1 3
    const auto columns = grid(4, {1, 2, 2, 0});
    EXPECT_EQ(neighbours(columns, RowEnd::stop), (Pairs{{-1, 2}, {-1, 3}, {0, -1}, {1, -1}}));
}

TEST(DesktopGrid, NumberedFromTheRight) {
    // 1 0
    // 3 2
    const auto mirrored = grid(4, {0, 2, 2, 1});
    EXPECT_EQ(neighbours(mirrored, RowEnd::stop), (Pairs{{1, -1}, {-1, 0}, {3, -1}, {-1, 2}}));
    EXPECT_EQ(neighbours(grid(4, {0, 2, 2, 2}), RowEnd::stop), neighbours(mirrored, RowEnd::stop));
    EXPECT_EQ(neighbours(grid(4, {0, 2, 2, 3}), RowEnd::stop),
              neighbours(grid(4, {0, 2, 2, 0}), RowEnd::stop));
}

TEST(DesktopGrid, RowsOrColumnsMayBeLeftOpen) {
    EXPECT_EQ(neighbours(grid(4, {0, 0, 2, 0}), RowEnd::stop),
              neighbours(grid(4, {0, 2, 2, 0}), RowEnd::stop));
    EXPECT_EQ(neighbours(grid(4, {0, 2, 0, 0}), RowEnd::stop),
              neighbours(grid(4, {0, 2, 2, 0}), RowEnd::stop));
}

TEST(DesktopGrid, IncompleteRowWrapsOverItsGap) {
    // 0 1 2
    // 3 4
    const auto gap = grid(5, {0, 3, 2, 0});
    EXPECT_EQ(gap.neighbour(4, right, RowEnd::stop), std::nullopt);
    EXPECT_EQ(gap.neighbour(4, right, RowEnd::wrapRow), 3U);
    EXPECT_EQ(gap.neighbour(3, left, RowEnd::wrapRow), 4U);
}

TEST(DesktopGrid, UnusableLayoutIsOneRow) {
    for (const Layout& layout : {Layout{}, Layout{0, 2}, Layout{0, 0, 0, 0}, Layout{0, 1, 1, 0},
                                 Layout{0, 4000000000U, 4000000000U, 0}}) {
        EXPECT_EQ(neighbours(grid(4, layout), RowEnd::stop), neighbours(grid(4), RowEnd::stop));
    }
}

TEST(DesktopGrid, OneDesktopHasNoNeighbour) {
    for (const auto end : {RowEnd::stop, RowEnd::wrapRow, RowEnd::wrapList}) {
        EXPECT_EQ(neighbours(grid(1), end), (Pairs{{-1, -1}}));
    }
}

TEST(DesktopGrid, DesktopThatIsNotThereHasNoNeighbour) {
    EXPECT_EQ(grid(4).neighbour(4, left, RowEnd::wrapList), std::nullopt);
    EXPECT_EQ(grid(0).neighbour(0, left, RowEnd::wrapList), std::nullopt);
}

} // namespace
} // namespace quillon
