#include "Platform/Linux/x11/PostedEvents.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(PostedEvents, EachIsClaimedOnce) {
    PostedEvents events;
    EXPECT_FALSE(events.claim(2, true));
    events.expect(2, true);
    events.expect(2, true);
    EXPECT_FALSE(events.claim(2, false));
    EXPECT_FALSE(events.claim(1, true));
    EXPECT_TRUE(events.claim(2, true));
    EXPECT_TRUE(events.claim(2, true));
    EXPECT_FALSE(events.claim(2, true));
}

TEST(PostedEvents, ForgetsAll) {
    PostedEvents events;
    events.expect(1, true);
    events.expect(31, false);
    events.forget();
    EXPECT_FALSE(events.claim(1, true));
    EXPECT_FALSE(events.claim(31, false));
}

TEST(PostedEvents, KnowsNoButtonsThatNobodyHas) {
    PostedEvents events;
    events.expect(1000, true);
    EXPECT_FALSE(events.claim(1000, true));
}

} // namespace
} // namespace quillon
