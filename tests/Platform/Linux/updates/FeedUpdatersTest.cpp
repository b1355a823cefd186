#include "Platform/Linux/updates/FeedUpdaters.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(FeedUpdatersTest, TheUserAgentFitsAHeader) {
    EXPECT_EQ(userAgent("0.1.0"), "Quillon/0.1.0");
    EXPECT_EQ(userAgent(""), "Quillon");
    EXPECT_EQ(userAgent("1.0-rc.1+x\r\nCookie: y (Z)"), "Quillon/1.0-rc.1+xCookieyZ");
}

} // namespace
} // namespace quillon
