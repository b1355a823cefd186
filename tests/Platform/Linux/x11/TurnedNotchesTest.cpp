#include "Platform/Linux/x11/TurnedNotches.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillon {
namespace {

struct TurnedNotchesTest : testing::Test {
    TurnedNotches turned;
    std::vector<int> posted;

    void release(std::uint8_t button, bool areCaught = true) {
        turned.released(button, areCaught, [this](std::uint8_t each) { posted.push_back(each); });
    }
};

using Caught = TurnedNotches::Caught;

TEST_F(TurnedNotchesTest, PostsWhenTheConsumedPressIsReleased) {
    turned.consumed(4);
    turned.turnTo(5);
    release(6);
    EXPECT_EQ(posted, std::vector<int>{});
    release(4);
    EXPECT_EQ(posted, std::vector<int>{5});
    release(4);
    EXPECT_EQ(posted, std::vector<int>{5});
}

TEST_F(TurnedNotchesTest, KnowsItsOwnOnce) {
    turned.consumed(7);
    turned.turnTo(6);
    release(7);
    EXPECT_EQ(turned.caught(7), Caught::others);
    EXPECT_EQ(turned.caught(6), Caught::ours);
    EXPECT_EQ(turned.caught(6), Caught::others);
}

TEST_F(TurnedNotchesTest, PostsAnewWhatComesAmidAnotherNotch) {
    turned.consumed(4);
    turned.turnTo(5);
    release(4);
    turned.consumed(4);
    turned.turnTo(5);
    EXPECT_EQ(turned.caught(5), Caught::tooEarly);
    release(5);
    EXPECT_EQ(posted, std::vector<int>{5});
    release(4);
    EXPECT_EQ(posted, (std::vector<int>{5, 5, 5})) << "its own, and the one that came too early";
}

TEST_F(TurnedNotchesTest, ExpectsNothingThatIsNotCaught) {
    turned.consumed(4);
    turned.turnTo(5);
    release(4, false);
    EXPECT_EQ(posted, std::vector<int>{5});
    EXPECT_EQ(turned.caught(5), Caught::others);
}

TEST_F(TurnedNotchesTest, ForgetsWhatWentElsewhere) {
    turned.consumed(4);
    turned.turnTo(5);
    release(4);
    turned.forgetPosted();
    EXPECT_EQ(turned.caught(5), Caught::others);
}

} // namespace
} // namespace quillon
