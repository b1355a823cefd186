// Where a tap is armed, on devices that scroll the other way: what taps see, and what programs get.

#include "TapBench.h"

namespace quillon {
namespace {

/// A tap that reverses every scroll that it sees.
struct Reverser {
    int seen = 0;

    static Event* callback(EventType /*type*/, Event* event, void* userInfo) {
        using enum EventField;
        if (event != nullptr) {
            ++static_cast<Reverser*>(userInfo)->seen;
            for (const auto field :
                 {scrollLineDeltaAxis1, scrollLineDeltaAxis2, scrollFixedPointDeltaAxis1,
                  scrollFixedPointDeltaAxis2, scrollPointDeltaAxis1, scrollPointDeltaAxis2}) {
                event->setDoubleValueField(field, -event->doubleValueField(field));
            }
        }
        return event;
    }
};

struct ReversedBandTest : TapBench {
    EventTapRef reversing(Reverser& reverser, bool isConstant = true) {
        EXPECT_TRUE(session.isProcessTrusted());
        auto made = events.createTap(TapLocation::hid, TapPlacement::headInsert,
                                     TapOptions::filtering, eventMask(EventType::scrollWheel),
                                     Reverser::callback, &reverser, "reverser");
        loop.addSource(events.createRunLoopSource(made));
        events.enableTap(*made, true);
        if (isConstant) {
            events.setConstantRewrite(*made, {.reversesLines = true});
        }
        return made;
    }

    /// Turned by the device alone, outside of every band.
    bool waitUntilReversed(bool isReversed) {
        client.movePointer(600, 400);
        return waitUntil([&] { return notch(4) == (isReversed ? 5 : 4); });
    }

    /// What the client gets of one notch: the button, 0 for none.
    int notch(std::uint8_t button) {
        const auto seen = client.buttons().size();
        client.pressWheel(button);
        if (!waitUntil([&] { return client.buttons().size() >= seen + 2; })) {
            return 0;
        }
        EXPECT_EQ(client.buttons().size(), seen + 2);
        return client.buttons()[seen].back() - '0';
    }

    bool enterBand() {
        client.movePointer(10, 400);
        return waitUntilHeld();
    }

    static constexpr std::pair<double, double> up{1, 0}, down{-1, 0}, left{0, -1}, right{0, 1};
};

TEST_F(ReversedBandTest, OlderReverserTurnsWhatOthersHaveLetPass) {
    Reverser reverser;
    Probe probe{.consumes = false};
    const auto older = reversing(reverser);
    const auto newer = tap(probe);
    ASSERT_TRUE(waitUntilReversed(true));
    EXPECT_EQ(reverser.seen, 0) << "outside of the band, the device does it alone";
    ASSERT_TRUE(enterBand());
    EXPECT_EQ(notch(4), 5);
    EXPECT_EQ(notch(5), 4);
    EXPECT_EQ(notch(6), 7);
    EXPECT_EQ(notch(7), 6);
    EXPECT_EQ(probe.deltas, (std::vector{up, down, left, right}));
    EXPECT_EQ(reverser.seen, 4);
}

TEST_F(ReversedBandTest, NewerReverserComesFirst) {
    Reverser reverser;
    Probe probe{.consumes = false};
    const auto older = tap(probe);
    const auto newer = reversing(reverser);
    ASSERT_TRUE(waitUntilReversed(true));
    ASSERT_TRUE(enterBand());
    EXPECT_EQ(notch(4), 5);
    EXPECT_EQ(notch(6), 7);
    EXPECT_EQ(probe.deltas, (std::vector{down, right}));
}

TEST_F(ReversedBandTest, ConsumedStaysConsumed) {
    Reverser reverser;
    Probe probe;
    const auto older = tap(probe);
    const auto newer = reversing(reverser);
    ASSERT_TRUE(waitUntilReversed(true));
    ASSERT_TRUE(enterBand());
    const auto before = client.buttons().size();
    for (std::size_t i = 1; i <= 20; ++i) {
        client.pressWheel(4);
        ASSERT_TRUE(waitUntil([&] { return probe.deltas.size() == i; }));
        EXPECT_EQ(probe.deltas.back(), down);
        // The server drops what is pressed again while the pointer stands still.
        ASSERT_TRUE(waitUntil([&] { return client.buttonsDown() == 0; }));
    }
    client.connection().sync();
    EXPECT_EQ(client.buttons().size(), before);
    events.setArmedAt(*older, nullptr);
    ASSERT_TRUE(waitUntilFree());
    EXPECT_EQ(notch(4), 5);
}

TEST_F(ReversedBandTest, SwitchedOnAndOffWithinTheBand) {
    Reverser reverser;
    Probe probe{.consumes = false};
    const auto older = heldTap(probe);
    EXPECT_EQ(notch(4), 4);
    for (int i = 0; i < 3; ++i) {
        auto newer = reversing(reverser);
        ASSERT_TRUE(waitUntil([&] { return notch(4) == 5; }));
        probe.deltas.clear();
        EXPECT_EQ(notch(4), 5);
        EXPECT_EQ(notch(7), 6);
        EXPECT_EQ(probe.deltas, (std::vector{down, left}));
        newer.reset();
        ASSERT_TRUE(waitUntil([&] { return notch(4) == 4; }));
        probe.deltas.clear();
        EXPECT_EQ(notch(4), 4);
        EXPECT_EQ(notch(7), 7);
        EXPECT_EQ(probe.deltas, (std::vector{up, right}));
    }
}

TEST_F(ReversedBandTest, TwoThatReverseAreNone) {
    Reverser first;
    Reverser second;
    Probe probe{.consumes = false};
    const auto a = reversing(first);
    const auto b = tap(probe);
    ASSERT_TRUE(waitUntilReversed(true));
    const auto c = reversing(second);
    ASSERT_TRUE(waitUntilReversed(false));
    ASSERT_TRUE(enterBand());
    EXPECT_EQ(notch(4), 4);
    EXPECT_EQ(probe.deltas, std::vector{down});
    events.enableTap(*c, false);
    ASSERT_TRUE(waitUntilReversed(true));
    events.enableTap(*a, false);
    ASSERT_TRUE(waitUntilReversed(false));
}

TEST_F(ReversedBandTest, RewritingInTheBandOnlyTurnsEachNotch) {
    Reverser reverser;
    Probe probe{.consumes = false};
    const auto older = tap(probe);
    const auto newer = reversing(reverser, false);
    ASSERT_TRUE(waitUntilReversed(false));
    ASSERT_TRUE(enterBand());
    for (const auto& [button, other] : {std::pair{4, 5}, {5, 4}, {6, 7}, {7, 6}}) {
        EXPECT_EQ(notch(static_cast<std::uint8_t>(button)), other);
    }
    EXPECT_EQ(probe.deltas, (std::vector{down, up, right, left}));
    EXPECT_EQ(reverser.seen, 4) << "nobody is asked about what is posted instead";
}

TEST_F(ReversedBandTest, TurnsEachOfManyNotches) {
    Reverser reverser;
    Probe probe{.consumes = false};
    const auto older = tap(probe);
    const auto newer = reversing(reverser, false);
    ASSERT_TRUE(enterBand());
    constexpr int many = 300;
    for (int i = 0; i < many; ++i) {
        ASSERT_EQ(notch(4), 5) << i;
        ASSERT_EQ(notch(7), 6) << i;
        ASSERT_TRUE(waitUntil([&] { return client.buttonsDown() == 0; }));
    }
    EXPECT_EQ(reverser.seen, 2 * many);
}

TEST_F(ReversedBandTest, ScrollThatWaitsTooLongGoesOnAsTheDeviceHasIt) {
    Reverser reverser;
    Probe probe;
    const auto older = reversing(reverser);
    const auto newer = tap(probe);
    ASSERT_TRUE(waitUntilReversed(true));
    ASSERT_TRUE(enterBand());
    const auto before = client.buttons().size();
    probe.meanwhile = [&] {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (client.buttons().size() == before && std::chrono::steady_clock::now() < deadline) {
        }
    };
    client.pressWheel(4);
    ASSERT_TRUE(waitUntil([&] { return !probe.told.empty(); }));
    ASSERT_GT(client.buttons().size(), before);
    EXPECT_EQ(client.buttons()[before], "press 5");
}

TEST_F(ReversedBandTest, PanicGivesTheDirectionBack) {
    Reverser reverser;
    const auto made = reversing(reverser);
    events.setPanicHandler([&] { events.enableTap(*made, false); });
    ASSERT_TRUE(waitUntilReversed(true));
    ASSERT_TRUE(waitUntil([&] { return !client.canGrabPanicChord(); }));
    client.pressPanicChord();
    EXPECT_TRUE(waitUntilReversed(false));
}

} // namespace
} // namespace quillon
