#include "KeysBench.h"

#include <algorithm>

namespace quillon {
namespace {

struct MediaPlayersTest : KeysBench {
    void press(SpecialKey key = SpecialKey::playPause) { keys->stroke(key); }
};

TEST_F(MediaPlayersTest, OfThreeTheOneThatPlaysGetsOneCommand) {
    FakePlayer one(bus.address(), "one", "Paused");
    FakePlayer two(bus.address(), "two", "Playing");
    FakePlayer three(bus.address(), "three", "Stopped");
    press();
    press(SpecialKey::next);
    press(SpecialKey::previous);
    EXPECT_EQ(commands(two, 3), (Words{"PlayPause", "Next", "Previous"}));
    EXPECT_TRUE(one.commands().empty());
    EXPECT_TRUE(three.commands().empty());
    EXPECT_TRUE(window.seen().empty());
}

TEST_F(MediaPlayersTest, OfTwoPausedTheOneThatWasPausedLast) {
    FakePlayer one(bus.address(), "one", "Playing");
    FakePlayer two(bus.address(), "two", "Playing");
    // Each is known to play by the time that it is paused.
    EXPECT_TRUE(waitUntil([&] { return one.questions() > 0 && two.questions() > 0; }));
    two.setStatus("Paused");
    one.setStatus("Paused");
    press();
    EXPECT_EQ(commands(one), Words{"PlayPause"});
    two.setStatus("Stopped");
    press(SpecialKey::next);
    EXPECT_EQ(commands(two), Words{"Next"});
    press();
    EXPECT_EQ(commands(two, 2), (Words{"Next", "PlayPause"}));
    EXPECT_EQ(one.commands(), Words{"PlayPause"});
}

TEST_F(MediaPlayersTest, AQuietChangeIsSeenBeforeTheCommand) {
    FakePlayer one(bus.address(), "one", "Playing");
    FakePlayer two(bus.address(), "two", "Paused");
    EXPECT_TRUE(waitUntil([&] { return one.questions() > 0 && two.questions() > 0; }));
    one.setStatus("Stopped", true);
    two.setStatus("Playing");
    press();
    EXPECT_EQ(commands(two), Words{"PlayPause"});
    EXPECT_TRUE(one.commands().empty());
}

TEST_F(MediaPlayersTest, ThoseThatWereThereBeforeAreKnown) {
    keys.reset();
    FakePlayer one(bus.address(), "one", "Paused", {.next = false});
    FakePlayer two(bus.address(), "two", "Stopped");
    keys.emplace(loop, bus.address());
    press(SpecialKey::next); // at once
    EXPECT_EQ(commands(two), Words{"Next"});
    EXPECT_TRUE(one.commands().empty());
}

TEST_F(MediaPlayersTest, TheNextOneGetsItWhenOneHangsWhoNeverDoes) {
    FakePlayer one(bus.address(), "one", "Playing");
    FakePlayer two(bus.address(), "two", "Paused");
    one.alsoNamed("one.more");
    press();
    EXPECT_EQ(commands(one), Words{"PlayPause"});
    one.hang();
    const double before = loop.uptime();
    press(SpecialKey::next);
    press(SpecialKey::volumeUp);
    EXPECT_EQ(seen(window), strokes("volumeUp"));
    EXPECT_EQ(commands(two), Words{"Next"});
    EXPECT_LT(loop.uptime() - before, 1.4); // one patience, however many names
    const double again = loop.uptime();
    press(SpecialKey::next);
    EXPECT_EQ(commands(two, 2), (Words{"Next", "Next"}));
    EXPECT_LT(loop.uptime() - again, 0.4); // it is known to hang
    one.goOn();
    // As soon as it answers it is again the one that plays.
    EXPECT_TRUE(waitUntil([&] {
        press(SpecialKey::previous);
        const auto got = one.commands();
        return !got.empty() && got.back() == "Previous";
    }));
    const auto got = one.commands();
    EXPECT_EQ(std::count(got.begin(), got.end(), "Next"), 0);
}

TEST_F(MediaPlayersTest, OneThatHangsOverItsCommandHasGotIt) {
    FakePlayer one(bus.address(), "one", "Playing");
    FakePlayer two(bus.address(), "two", "Paused");
    one.hangAtCommand();
    press(SpecialKey::next);
    EXPECT_EQ(commands(one), Words{"Next"});
    press(); // after it has been waited for
    EXPECT_EQ(commands(two), Words{"PlayPause"});
    EXPECT_TRUE(window.seen().empty());
}

TEST_F(MediaPlayersTest, WithTheOnlyOneHangingTheWindowGetsIt) {
    FakePlayer one(bus.address(), "one", "Playing");
    press(SpecialKey::next);
    EXPECT_EQ(commands(one), Words{"Next"});
    one.hang();
    press();
    EXPECT_EQ(seen(window), strokes("playPause"));
    EXPECT_EQ(one.commands(), Words{"Next"});
}

TEST_F(MediaPlayersTest, OneThatKnowsNoCommandsIsPassedOver) {
    FakePlayer one(bus.address(), "one", "Playing");
    FakePlayer two(bus.address(), "two", "Paused");
    one.refuseCommands();
    press();
    EXPECT_EQ(commands(two), Words{"PlayPause"});
    EXPECT_TRUE(one.commands().empty());
}

TEST_F(MediaPlayersTest, PlayersVanish) {
    FakePlayer two(bus.address(), "two", "Paused");
    std::optional<FakePlayer> one(std::in_place, bus.address(), "one", "Playing");
    press();
    EXPECT_EQ(commands(*one), Words{"PlayPause"});
    one.reset();
    press();
    EXPECT_EQ(commands(two), Words{"PlayPause"});
    one.emplace(bus.address(), "one", "Playing");
    press();
    EXPECT_EQ(commands(*one), Words{"PlayPause"});
    EXPECT_EQ(two.commands().size(), 1U);
}

TEST_F(MediaPlayersTest, TheRelayGetsNothing) {
    FakePlayer relay(bus.address(), "playerctld", "Playing");
    FakePlayer one(bus.address(), "one", "Paused");
    press();
    EXPECT_EQ(commands(one), Words{"PlayPause"});
    EXPECT_TRUE(relay.commands().empty());
}

TEST_F(MediaPlayersTest, TheBusRestarts) {
    for (int round = 0; round < 2; ++round) {
        FakePlayer one(bus.address(), "one", "Playing");
        press();
        EXPECT_EQ(commands(one), Words{"PlayPause"});
        bus.kill();
        const auto before = window.seen().size();
        press();
        EXPECT_EQ(seen(window, before + 2).size(), before + 2);
        bus.restart();
    }
    // Without a key that would look for it.
    FakePlayer two(bus.address(), "two", "Paused");
    EXPECT_TRUE(waitUntil([&] { return two.questions() > 0; }));
}

TEST_F(MediaPlayersTest, ABusThatComesLaterIsFound) {
    keys.reset();
    bus.kill();
    keys.emplace(loop, bus.address());
    press();
    EXPECT_EQ(seen(window), strokes("playPause"));
    bus.restart();
    FakePlayer one(bus.address(), "one", "Paused");
    EXPECT_TRUE(waitUntil([&] { return one.questions() > 0; }));
    press();
    EXPECT_EQ(commands(one), Words{"PlayPause"});
}

TEST_F(MediaPlayersTest, TheBusRestartsWhileAPlayerIsWaitedFor) {
    FakePlayer one(bus.address(), "one", "Playing");
    press(SpecialKey::next);
    EXPECT_EQ(commands(one), Words{"Next"});
    one.hang();
    press();
    bus.kill();
    EXPECT_EQ(seen(window), strokes("playPause"));
    bus.restart();
}

TEST_F(MediaPlayersTest, TheEndWaitsForNobody) {
    FakePlayer one(bus.address(), "one", "Playing");
    press(SpecialKey::next);
    EXPECT_EQ(commands(one), Words{"Next"});
    one.hang();
    window.takeOut(SpecialKey::volumeUp);
    press();
    press(SpecialKey::volumeUp);
    const double before = loop.uptime();
    keys.reset();
    EXPECT_LT(loop.uptime() - before, 0.09);
}

} // namespace
} // namespace quillon
