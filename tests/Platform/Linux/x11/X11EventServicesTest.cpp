// Taps on a real X server, in one process with the main thread under the test's control.

#include "TapBench.h"

#include <thread>

namespace quillon {
namespace {

using X11EventServicesTest = TapBench;

TEST_F(X11EventServicesTest, HoldsOnlyWhileThePointerIsInTheBand) {
    Probe probe;
    client.movePointer(600, 400);
    const auto made = tap(probe);
    EXPECT_TRUE(client.canGrabWheel());
    client.movePointer(10, 400);
    EXPECT_TRUE(waitUntilHeld());
    client.movePointer(41, 400);
    EXPECT_TRUE(waitUntilFree());
}

TEST_F(X11EventServicesTest, NoticesAWarpToo) {
    Probe probe;
    client.movePointer(600, 400);
    const auto made = tap(probe);
    xcb_warp_pointer(client.connection().get(), XCB_NONE, client.connection().root(), 0, 0, 0, 0, 5,
                     300);
    client.connection().sync();
    EXPECT_TRUE(waitUntilHeld());
}

TEST_F(X11EventServicesTest, HoldsAtOnceWhenThePointerIsThereAlready) {
    client.movePointer(10, 400);
    Probe probe;
    auto made = tap(probe);
    EXPECT_TRUE(waitUntilHeld());
    made.reset();
    EXPECT_TRUE(waitUntilFree()) << "a removed tap holds nothing";
}

TEST_F(X11EventServicesTest, ConsumesWithTheFieldsOfEachButton) {
    Probe probe;
    const auto made = heldTap(probe);
    const std::vector<std::pair<std::uint8_t, std::pair<double, double>>> rows{
        {4, {1, 0}}, {5, {-1, 0}}, {6, {0, -1}}, {7, {0, 1}}};
    for (const auto& [button, deltas] : rows) {
        probe.deltas.clear();
        client.pressWheel(button);
        ASSERT_TRUE(waitUntil([&] { return !probe.deltas.empty(); }));
        EXPECT_EQ(probe.deltas[0], deltas) << int{button};
    }
    EXPECT_EQ(probe.places.back(), (Point{10, 400}));
    EXPECT_EQ(probe.eventPlaces.back(), (Point{10, 400})) << "here the middle is the middle";
    client.connection().sync();
    EXPECT_EQ(client.wheelPresses(), 0);
}

TEST_F(X11EventServicesTest, PassesExactlyOnce) {
    Probe probe{.consumes = false};
    const auto made = heldTap(probe);
    for (int i = 1; i <= 20; ++i) {
        client.pressWheel(4);
        ASSERT_TRUE(waitUntil([&] { return client.wheelPresses() >= i; }));
    }
    client.connection().sync();
    EXPECT_EQ(client.wheelPresses(), 20);
    EXPECT_EQ(probe.deltas.size(), 20U);
}

TEST_F(X11EventServicesTest, NewestTapRunsFirst) {
    client.movePointer(10, 400);
    std::vector<int> order;
    Probe old{.consumes = true, .number = 1, .order = &order};
    Probe recent{.consumes = false, .number = 2, .order = &order};
    const auto a = tap(old);
    const auto b = tap(recent);
    ASSERT_TRUE(waitUntilHeld());
    client.pressWheel(4);
    EXPECT_TRUE(waitUntil([&] { return order.size() == 2; }));
    EXPECT_EQ(order, (std::vector{2, 1}));
}

TEST_F(X11EventServicesTest, TapThatAnswersTooLateIsDisabledAndToldSo) {
    Probe probe;
    const auto made = heldTap(probe);
    // The callback does not return before the other program has got the scroll all the same.
    bool passed = false;
    probe.meanwhile = [&] {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!passed && std::chrono::steady_clock::now() < deadline) {
            passed = client.wheelPresses() == 1;
        }
    };
    client.pressWheel(4);
    ASSERT_TRUE(waitUntil([&] { return !probe.told.empty(); }));
    EXPECT_TRUE(passed);
    EXPECT_EQ(probe.told, (std::vector{EventType::tapDisabledByTimeout}));
    EXPECT_TRUE(waitUntilFree()) << "a disabled tap holds nothing";
    EXPECT_EQ(lineCount(), 1U);

    probe.meanwhile = nullptr;
    events.enableTap(*made, true);
    ASSERT_TRUE(waitUntilHeld());
    client.pressWheel(4);
    EXPECT_TRUE(waitUntil([&] { return probe.deltas.size() == 2; }));
    client.connection().sync();
    EXPECT_EQ(client.wheelPresses(), 1) << "the second one was consumed";
}

TEST_F(X11EventServicesTest, BusyMainThreadCostsNoScroll) {
    Probe probe;
    const auto made = heldTap(probe);
    client.pressWheel(4);
    // This thread is the main one, and it does not look at its events now.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (client.wheelPresses() == 0 && std::chrono::steady_clock::now() < deadline) {
    }
    EXPECT_EQ(client.wheelPresses(), 1);
    client.pressWheel(4);
    while (client.wheelPresses() == 1 && std::chrono::steady_clock::now() < deadline) {
    }
    EXPECT_EQ(client.wheelPresses(), 2) << "and the next ones are not even held up";
    ASSERT_TRUE(waitUntil([&] { return !probe.told.empty(); }));
    EXPECT_TRUE(probe.deltas.empty()) << "what has passed must not count as a notch too";
}

TEST_F(X11EventServicesTest, AnotherProgramsGrabIsSaidOnceAndTriedAgainAtTheNextEntry) {
    auto other = std::make_unique<XClient>();
    other->grabWheel();
    other->connection().sync();
    client.movePointer(600, 400);
    Probe probe;
    const auto made = tap(probe);
    client.movePointer(10, 400);
    ASSERT_TRUE(waitUntil([&] { return lineCount() == 1; }));
    client.movePointer(600, 400);
    client.movePointer(10, 400);
    other.reset();
    client.movePointer(600, 400);
    // Not while it is in the band, but on the way in.
    ASSERT_TRUE(waitUntil([&] {
        client.movePointer(600, 400);
        QCoreApplication::processEvents();
        client.movePointer(10, 400);
        return !client.canGrabWheel();
    }));
    EXPECT_EQ(lineCount(), 1U);
}

TEST_F(X11EventServicesTest, ServerThatDiesIsNoticedAndTakesTheTaps) {
    client.movePointer(10, 400);
    Probe probe;
    const auto made = tap(probe);
    bool invalidated = false;
    events.setInvalidationHandler(*made, [&] { invalidated = true; });
    ASSERT_TRUE(waitUntilHeld());
    server.kill();
    EXPECT_TRUE(waitUntil([&] { return lost && invalidated; }));
    EXPECT_FALSE(session.isGranted());
}

TEST_F(X11EventServicesTest, PanicChordGivesEverythingBackAtOnce) {
    Probe probe;
    auto made = heldTap(probe);
    int panics = 0;
    events.setPanicHandler([&] {
        ++panics;
        made.reset();
    });
    client.pressPanicChord();
    while (!client.canGrabWheel()) {
        std::this_thread::yield(); // the main thread is busy: this is not its work
    }
    EXPECT_EQ(panics, 0);
    events.setArmedAt(*made, leftBand);
    client.movePointer(12, 400);
    client.connection().sync();
    EXPECT_TRUE(waitUntil([&] { return panics == 1; }));
    EXPECT_TRUE(client.canGrabWheel()) << "whatever was said of the band meanwhile";
    EXPECT_EQ(lineCount(), 1U);

    const auto again = tap(probe);
    EXPECT_TRUE(waitUntilHeld()) << "a tool that is switched on works";
}

TEST_F(X11EventServicesTest, PanicChordEndsTheGrabOfAWheelThatIsStillDown) {
    Probe probe;
    const auto made = heldTap(probe);
    client.fakeButton(XCB_BUTTON_PRESS, 4);
    ASSERT_TRUE(waitUntil([&] { return probe.deltas.size() == 1; }));
    ASSERT_FALSE(client.canGrabPointer());
    client.pressPanicChord();
    EXPECT_TRUE(waitUntil([&] { return client.canGrabPointer(); }));
}

TEST_F(X11EventServicesTest, PanicChordIsFreeWhenThereIsNoTap) {
    Probe probe;
    EXPECT_TRUE(client.canGrabPanicChord());
    auto made = tap(probe);
    EXPECT_TRUE(waitUntil([&] { return !client.canGrabPanicChord(); }));
    events.setArmedAt(*made, nullptr);
    EXPECT_FALSE(client.canGrabPanicChord()) << "also with nothing armed";
    made.reset();
    EXPECT_TRUE(waitUntil([&] { return client.canGrabPanicChord(); }));
}

} // namespace
} // namespace quillon
