#include "Platform/Linux/updates/UpdateCheck.h"

#include "Platform/Linux/updates/Feeds.h"
#include "Platform/Linux/updates/HeldFetches.h"
#include "Platform/Simulated/VirtualRunLoop.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct UpdateCheckTest : testing::Test {
    VirtualRunLoop loop;
    int running = 0;
    HeldFetches fetches{loop, running};
    std::vector<UpdateFindings> found;
    std::unique_ptr<UpdateCheck> check = std::make_unique<UpdateCheck>(
        loop, fetches, "https://example.org/",
        [this](UpdateFindings findings) { found.push_back(std::move(findings)); });
};

TEST_F(UpdateCheckTest, FindsTheNewest) {
    fetches.answer(feedOf(itemOf("2") + itemOf("3")));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(std::get<std::optional<PublishedVersion>>(found[0])->version, "3");
    EXPECT_EQ(running, 0);
    loop.advance(100);
    EXPECT_EQ(found.size(), 1);
}

TEST_F(UpdateCheckTest, GivesUpInTimeAndCancelsTheFetch) {
    loop.advance(100);
    ASSERT_EQ(found.size(), 1);
    EXPECT_TRUE(std::holds_alternative<FeedFailure>(found[0]));
    EXPECT_EQ(running, 0);
}

TEST_F(UpdateCheckTest, DestroyedItIsSilent) {
    check.reset();
    EXPECT_EQ(running, 0);
    EXPECT_EQ(loop.timerCount(), 0);
    EXPECT_TRUE(found.empty());
}

} // namespace
} // namespace quillon
