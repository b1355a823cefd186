#include "Platform/Linux/reversal/RewriteFight.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const auto start = RewriteFight::Clock::time_point{} + seconds(1000);

TEST(RewriteFight, TheThirdWithinAFewSecondsIsOne) {
    RewriteFight fight;
    EXPECT_FALSE(fight.rewritten(start));
    EXPECT_FALSE(fight.rewritten(start + milliseconds(1)));
    EXPECT_TRUE(fight.rewritten(start + milliseconds(2999)));
}

TEST(RewriteFight, APersonIsSlower) {
    RewriteFight fight;
    for (int i = 0; i < 20; ++i) {
        EXPECT_FALSE(fight.rewritten(start + i * milliseconds(1500))) << i;
    }
}

TEST(RewriteFight, OnlyTheLatestCount) {
    RewriteFight fight;
    EXPECT_FALSE(fight.rewritten(start));
    EXPECT_FALSE(fight.rewritten(start + seconds(10)));
    EXPECT_FALSE(fight.rewritten(start + seconds(11)));
    EXPECT_TRUE(fight.rewritten(start + seconds(12)));
}

} // namespace
} // namespace quillon
