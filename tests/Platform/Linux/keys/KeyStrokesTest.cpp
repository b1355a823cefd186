#include "KeysBench.h"

#include <QTimer>

namespace quillon {
namespace {

using Grabs = KeyClient::Grabs;

struct KeyStrokesTest : KeysBench {};

TEST_F(KeyStrokesTest, TheFocusedWindowGetsSoundKeys) {
    keys->stroke(SpecialKey::volumeUp);
    EXPECT_EQ(seen(window), strokes("volumeUp"));
    EXPECT_FALSE(window.isAnyDown());
}

TEST_F(KeyStrokesTest, FiveSoundKeysArriveInOrder) {
    KeyClient grabber;
    ASSERT_TRUE(grabber.grab(SpecialKey::volumeUp, Grabs::core));
    ASSERT_TRUE(grabber.grab(SpecialKey::volumeDown, Grabs::core));
    for (int i = 0; i < 5; ++i) {
        QTimer::singleShot(8 * i, Qt::PreciseTimer, [this] { keys->stroke(SpecialKey::volumeUp); });
    }
    QTimer::singleShot(8 * 5, Qt::PreciseTimer, [this] { keys->stroke(SpecialKey::volumeDown); });
    Words expected = strokes("volumeUp", 5);
    expected.insert(expected.end(), {"down volumeDown", "up volumeDown"});
    EXPECT_EQ(seen(grabber, expected.size()), expected);
    EXPECT_TRUE(window.seen().empty());
}

struct GrabbedKeyTest : KeysBench, testing::WithParamInterface<Grabs> {};

TEST_P(GrabbedKeyTest, ItsGrabberGetsItAndNoPlayer) {
    KeyClient grabber;
    FakePlayer player(bus.address(), "one", "Playing");
    for (const auto& [key, word] :
         {std::pair(SpecialKey::playPause, "playPause"), std::pair(SpecialKey::next, "next"),
          std::pair(SpecialKey::previous, "previous")}) {
        const auto before = grabber.seen().size();
        ASSERT_TRUE(grabber.grab(key, GetParam()));
        keys->stroke(key);
        const Words all = seen(grabber, before + 2);
        EXPECT_EQ(Words(all.begin() + static_cast<long>(before), all.end()), strokes(word));
    }
    fence();
    EXPECT_EQ(grabber.seen().size(), 6U);
    EXPECT_EQ(window.seen(), strokes("volumeDown"));
    EXPECT_TRUE(player.commands().empty());
}

TEST_P(GrabbedKeyTest, AnyOfItsKeycodesCounts) {
    KeyClient grabber;
    FakePlayer player(bus.address(), "one", "Playing");
    const auto first = window.keycodes(keysymOf(SpecialKey::next)).front();
    const xcb_keycode_t another = 250;
    ASSERT_GT(another, first);
    window.setKeysym(another, keysymOf(SpecialKey::next));
    ASSERT_TRUE(grabber.grabKeycode(another, GetParam()));
    keys->stroke(SpecialKey::next);
    EXPECT_EQ(seen(grabber), strokes("next"));
    fence();
    EXPECT_TRUE(player.commands().empty());
}

TEST_P(GrabbedKeyTest, GrabbersComeAndGo) {
    FakePlayer player(bus.address(), "one", "Playing");
    for (int round = 1; round <= 3; ++round) {
        {
            KeyClient grabber;
            ASSERT_TRUE(grabber.grab(SpecialKey::playPause, GetParam()));
            keys->stroke(SpecialKey::playPause);
            EXPECT_EQ(seen(grabber), strokes("playPause"));
        }
        keys->stroke(SpecialKey::playPause);
        EXPECT_EQ(commands(player, round), Words(round, "PlayPause"));
    }
}

TEST_P(GrabbedKeyTest, HeldModifiersCount) {
    constexpr xcb_keysym_t shiftKey = 0xFFE1;
    KeyClient plain;
    KeyClient shifted;
    FakePlayer player(bus.address(), "one", "Playing");
    const auto shift = window.keycodes(shiftKey).front();
    ASSERT_TRUE(plain.grab(SpecialKey::playPause, GetParam()));
    window.pressKey(shift, true);
    keys->stroke(SpecialKey::playPause); // which nobody has grabbed
    EXPECT_EQ(commands(player), Words{"PlayPause"});
    ASSERT_TRUE(shifted.grab(SpecialKey::playPause, GetParam(), XCB_MOD_MASK_SHIFT));
    keys->stroke(SpecialKey::playPause);
    EXPECT_EQ(seen(shifted), strokes("playPause"));
    EXPECT_EQ(shifted.latestState(), unsigned{XCB_MOD_MASK_SHIFT});
    EXPECT_TRUE(window.isAnyDown()); // it is still the user's
    window.pressKey(shift, false);
    keys->stroke(SpecialKey::playPause);
    EXPECT_EQ(seen(plain), strokes("playPause"));
    EXPECT_EQ(player.commands(), Words{"PlayPause"});
    EXPECT_FALSE(window.isAnyDown());
}

INSTANTIATE_TEST_SUITE_P(Kinds, GrabbedKeyTest, testing::Values(Grabs::core, Grabs::extension),
                         [](const auto& kind) {
                             return kind.param == Grabs::core ? "Core" : "Extension";
                         });

TEST_F(KeyStrokesTest, WithoutGrabberAndPlayerTheWindowGetsIt) {
    keys->stroke(SpecialKey::next);
    EXPECT_EQ(seen(window), strokes("next"));
}

TEST_F(KeyStrokesTest, WithoutBusTheWindowGetsIt) {
    keys.reset();
    keys.emplace(loop, "");
    keys->stroke(SpecialKey::next);
    EXPECT_EQ(seen(window), strokes("next"));
}

TEST_F(KeyStrokesTest, WithStuckBusTheWindowGetsIt) {
    bus.stop();
    keys->stroke(SpecialKey::next);
    EXPECT_EQ(seen(window), strokes("next"));
    keys->stroke(SpecialKey::volumeUp); // which waits for nobody
    EXPECT_EQ(seen(window, 4).size(), 4U);
    bus.resume();
}

TEST_F(KeyStrokesTest, AKeysymThatTheKeyboardLacksIsBorrowedAndGivenBack) {
    KeyClient grabber;
    EXPECT_TRUE(grabber.grab(SpecialKey::volumeUp, Grabs::core));
    window.takeOut(SpecialKey::volumeUp);
    window.takeOut(SpecialKey::volumeDown);
    for (const auto key : {SpecialKey::volumeUp, SpecialKey::volumeUp}) {
        keys->stroke(key);
    }
    EXPECT_EQ(seen(grabber, 4), strokes("volumeUp", 2));
    EXPECT_TRUE(
        waitUntil([this] { return window.keycodes(keysymOf(SpecialKey::volumeUp)).empty(); }));
    keys->stroke(SpecialKey::volumeDown); // for which nobody waits
    EXPECT_EQ(seen(window), strokes("volumeDown"));
    EXPECT_EQ(grabber.seen().size(), 4U);
    keys.reset();
    EXPECT_TRUE(window.keycodes(keysymOf(SpecialKey::volumeDown)).empty());
}

TEST_F(KeyStrokesTest, WhatAnotherHasPutOntoABorrowedKeyStays) {
    constexpr xcb_keysym_t other = 'q';
    window.takeOut(SpecialKey::volumeUp);
    keys->stroke(SpecialKey::volumeUp);
    EXPECT_EQ(seen(window), strokes("volumeUp"));
    const auto borrowed = window.keycodes(keysymOf(SpecialKey::volumeUp));
    ASSERT_EQ(borrowed.size(), 1U);
    window.setKeysym(borrowed.front(), other);
    keys.reset();
    const auto now = window.keycodes(other);
    EXPECT_NE(std::find(now.begin(), now.end(), borrowed.front()), now.end());
}

TEST_F(KeyStrokesTest, AFullKeyboardIsLeftAlone) {
    window.takeOut(SpecialKey::volumeUp);
    for (int keycode = 8; keycode <= 255; ++keycode) {
        window.setKeysym(static_cast<xcb_keycode_t>(keycode), 'x');
    }
    window.setKeysym(100, keysymOf(SpecialKey::volumeDown));
    keys->stroke(SpecialKey::volumeUp);
    fence();
    EXPECT_EQ(window.seen(), strokes("volumeDown"));
    EXPECT_EQ(window.keycodes('x').size(), 247U);
}

TEST_F(KeyStrokesTest, AMediaKeyThatTheKeyboardLacksGoesToAPlayerWithoutBorrowing) {
    FakePlayer player(bus.address(), "one", "Playing");
    window.takeOut(SpecialKey::next);
    const int before = window.changes();
    keys->stroke(SpecialKey::next);
    EXPECT_EQ(commands(player), Words{"Next"});
    EXPECT_EQ(window.changes(), before);
}

TEST_F(KeyStrokesTest, ALostConnectionIsMadeAnew) {
    keys->stroke(SpecialKey::volumeUp);
    EXPECT_EQ(seen(window), strokes("volumeUp"));
    // All others, as somebody may who wants to be rid of a window.
    xcb_kill_client(window.connection().get(), XCB_KILL_ALL_TEMPORARY);
    keys->stroke(SpecialKey::volumeDown);
    EXPECT_EQ(seen(window, 4).back(), "up volumeDown");
}

TEST_F(KeyStrokesTest, WithoutServerNothingHappens) {
    server.kill();
    keys->stroke(SpecialKey::volumeUp);
    FakePlayer player(bus.address(), "one", "Playing");
    keys->stroke(SpecialKey::next);
    EXPECT_EQ(commands(player), Words{"Next"});
}

TEST(KeyStrokesWithoutInjection, APlayerGetsTheMediaKey) {
    const XServer server({"-extension", "XTEST"});
    const TemporaryFolder folder;
    const MessageBus bus(folder.path() / "bus");
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    QtRunLoop loop;
    FakePlayer player(bus.address(), "one", "Playing");
    KeyClient grabber;
    ASSERT_TRUE(grabber.grab(SpecialKey::next, Grabs::core));
    SpecialKeys keys(loop, bus.address());
    keys.stroke(SpecialKey::volumeUp);
    keys.stroke(SpecialKey::next);
    EXPECT_EQ(KeysBench::commands(player), Words{"Next"});
}

} // namespace
} // namespace quillon
