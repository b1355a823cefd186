// Devices whose drivers have a setting for the direction.

#include "ReversalBench.h"

namespace quillon {
namespace {

struct PropertyReversal : ReversalBench {
    void SetUp() override { setFlags(mouse(), natural, {0}); }
};

TEST_F(PropertyReversal, InvertsWhatTheUserHasAndGivesItBack) {
    for (const std::uint8_t users : {0, 1}) {
        setFlags(mouse(), natural, {users});
        reversal->follow(mice);
        EXPECT_EQ(numbers(mouse(), natural), Numbers{1 - users});
        EXPECT_EQ(numbers(mouse(), before), Numbers{users});
        EXPECT_TRUE(reversed.contains(mouse()));
        reversal->follow(none);
        EXPECT_EQ(numbers(mouse(), natural), Numbers{users});
        EXPECT_EQ(numbers(mouse(), before), std::nullopt);
        EXPECT_FALSE(reversed.contains(mouse()));
    }
}

TEST_F(PropertyReversal, LeavesItsButtonsAlone) {
    const ButtonMap users = map(mouse());
    reversal->follow(both);
    EXPECT_EQ(map(mouse()), users);
}

TEST_F(PropertyReversal, TellsTouchpadsFromMice) {
    reversal->follow(touchpads);
    EXPECT_EQ(numbers(mouse(), natural), Numbers{0});
    reversal->follow(none);
    setFlags(mouse(), "libinput Scroll Methods Available", {1, 1, 0});
    reversal->follow(mice);
    EXPECT_EQ(numbers(mouse(), natural), Numbers{0});
    reversal->follow(touchpads);
    EXPECT_EQ(numbers(mouse(), natural), Numbers{1});
    EXPECT_NE(reversed.plain(), ReversedDevices::Plain::all);
}

TEST_F(PropertyReversal, InvertsDistances) {
    xcb_input_xi_delete_property(client.connection().get(), mouse(),
                                 client.connection().atom(natural));
    for (const auto& [property, users, inverted] :
         {std::tuple{"Evdev Scrolling Distance", Numbers{3, -2, 1}, Numbers{-3, 2, 1}},
          std::tuple{"Synaptics Scrolling Distance", Numbers{100, 90}, Numbers{-100, -90}}}) {
        setNumbers(mouse(), property, users);
        reversal->follow(mice);
        EXPECT_EQ(numbers(mouse(), property), inverted);
        reversal->follow(none);
        EXPECT_EQ(numbers(mouse(), property), users);
        xcb_input_xi_delete_property(client.connection().get(), mouse(),
                                     client.connection().atom(property));
    }
}

TEST_F(PropertyReversal, ReversesWhatSomebodySetsMeanwhile) {
    reversal->follow(mice);
    setFlags(mouse(), natural, {0});
    EXPECT_TRUE(waitForNumbers(mouse(), natural, {1}));
    EXPECT_EQ(numbers(mouse(), before), Numbers{0});
    // The same as is there already: a settings program knows nothing of what we have done.
    setFlags(mouse(), natural, {1});
    EXPECT_TRUE(waitForNumbers(mouse(), natural, {0}));
    EXPECT_EQ(numbers(mouse(), before), Numbers{1});
    reversal->follow(none);
    EXPECT_EQ(numbers(mouse(), natural), Numbers{1});
    EXPECT_EQ(lines, std::vector<std::string>{});
}

TEST_F(PropertyReversal, TakesTheLastOfSeveralForWhatIsWanted) {
    reversal->follow(mice);
    setFlags(mouse(), natural, {1});
    setFlags(mouse(), natural, {0});
    setFlags(mouse(), natural, {1}); // all of them before any is heard of
    EXPECT_TRUE(waitForNumbers(mouse(), natural, {0}));
    reversal->follow(none);
    EXPECT_EQ(numbers(mouse(), natural), Numbers{1});
    EXPECT_EQ(lines, std::vector<std::string>{});
}

TEST_F(PropertyReversal, LeavesADeviceThatSomebodyFightsFor) {
    reversal->follow(mice);
    EXPECT_TRUE(waitUntil([&] {
        if (numbers(mouse(), natural) != Numbers{0}) {
            setFlags(mouse(), natural, {0});
        }
        return !lines.empty();
    }));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("Xvfb mouse"), std::string::npos) << lines[0];
    EXPECT_EQ(numbers(mouse(), natural), Numbers{0});
    EXPECT_EQ(numbers(mouse(), before), std::nullopt);
    EXPECT_FALSE(reversed.contains(mouse()));
    EXPECT_TRUE(reversed.contains(injected())) << "the others are nobody's business";
}

TEST_F(PropertyReversal, RestoresWhatWasLeftBehindOnly) {
    // As a program leaves it that ends by force: amid the change, after it, and long before.
    setFlags(mouse(), natural, {0});
    setNumbers(mouse(), before, {0});
    reversal->follow(none);
    EXPECT_EQ(numbers(mouse(), natural), Numbers{0});
    EXPECT_EQ(numbers(mouse(), before), std::nullopt);

    reversal = std::make_unique<ScrollReversal>(diagnostics, reversed);
    setFlags(mouse(), natural, {1});
    setNumbers(mouse(), before, {0});
    reversal->follow(none);
    EXPECT_EQ(numbers(mouse(), natural), Numbers{0});
    EXPECT_EQ(numbers(mouse(), before), std::nullopt);

    reversal = std::make_unique<ScrollReversal>(diagnostics, reversed);
    setFlags(mouse(), natural, {1});
    reversal->follow(none);
    EXPECT_EQ(numbers(mouse(), natural), Numbers{1}) << "nobody has left this";
}

TEST_F(PropertyReversal, IsSilentOnceItIsOff) {
    reversal->follow(mice);
    reversal->follow(none);
    setFlags(mouse(), natural, {1});
    setFlags(mouse(), natural, {0});
    for (int i = 0; i < 50; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    EXPECT_EQ(numbers(mouse(), natural), Numbers{0});
    EXPECT_EQ(numbers(mouse(), before), std::nullopt);
}

} // namespace
} // namespace quillon
