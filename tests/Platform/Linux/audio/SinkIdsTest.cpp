#include "Platform/Linux/audio/SinkIds.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(SinkIds, EachSinkHasOneThatIsNotTheSystemObjects) {
    SinkIds ids;
    const AudioObjectId first = ids.idOf(0);
    const AudioObjectId second = ids.idOf(0xFFFFFFFE);
    EXPECT_GT(first, audioSystemObject);
    EXPECT_NE(first, second);
    EXPECT_EQ(ids.idOf(0), first);
    EXPECT_EQ(ids.indexOf(first), 0U);
    EXPECT_EQ(ids.indexOf(second), 0xFFFFFFFE);
}

TEST(SinkIds, NoOtherNumberIsOne) {
    SinkIds ids;
    const AudioObjectId only = ids.idOf(7);
    for (const AudioObjectId other : {0U, audioSystemObject, only + 1, 0xFFFFFFFFU}) {
        EXPECT_EQ(ids.indexOf(other), std::nullopt) << other;
    }
}

TEST(SinkIds, AnotherServersSinkIsAnotherObject) {
    SinkIds ids;
    const AudioObjectId before = ids.idOf(0);
    ids.forgetAll();
    EXPECT_EQ(ids.indexOf(before), std::nullopt);
    EXPECT_NE(ids.idOf(0), before);
    EXPECT_EQ(ids.indexOf(before), std::nullopt);
}

} // namespace
} // namespace quillon
