// Monitors of wheels that are held in a band.
#include "Platform/Linux/x11/X11EventMonitors.h"

#include "TapBench.h"

namespace quillon {
namespace {

constexpr int many = 200;

struct WheelMonitorsTest : TapBench {
    OwnWindows ownWindows;
    X11EventMonitors monitors{ownWindows, postedEvents, caughtPresses};
    std::vector<MonitoredEvent> seen;
    EventMonitorRef listening = monitors.addGlobalMonitor(
        eventMask(EventType::scrollWheel) | eventMask(EventType::otherMouseDown),
        [this](const MonitoredEvent& event) { seen.push_back(event); }, {});

    /// A press that comes after all of them has been told of, and is left out.
    void awaitEnd() {
        client.fakeButton(XCB_BUTTON_PRESS, 9);
        client.fakeButton(XCB_BUTTON_RELEASE, 9);
        EXPECT_TRUE(waitUntil(
            [this] { return !seen.empty() && seen.back().type == EventType::otherMouseDown; }));
        if (!seen.empty()) {
            seen.pop_back();
        }
    }
    /// What the client has got but for the press that marks the end.
    int passed() { return client.wheelPresses() - 1; }

    void turn(Probe& probe, int count, std::uint8_t button = 5) {
        for (int i = 0; i < count; ++i) {
            const auto asked = probe.places.size();
            client.pressWheel(button);
            // While a press waits for its answer the server loses some of those that are injected.
            ASSERT_TRUE(waitUntil(
                [&] { return probe.places.size() > asked && client.buttonsDown() == 0; }));
        }
    }
};

TEST_F(WheelMonitorsTest, WhatPassesIsToldOnce) {
    Probe probe{.consumes = false};
    const auto made = heldTap(probe);
    turn(probe, many);
    awaitEnd();
    EXPECT_EQ(seen.size(), std::size_t{many});
    EXPECT_EQ(passed(), many);
}

TEST_F(WheelMonitorsTest, WhatIsConsumedIsNotTold) {
    Probe probe;
    const auto made = heldTap(probe);
    turn(probe, many);
    awaitEnd();
    EXPECT_EQ(seen.size(), 0U);
    EXPECT_EQ(passed(), 0);
    client.movePointer(600, 400);
    ASSERT_TRUE(waitUntilFree());
    client.pressWheel(5);
    awaitEnd();
    EXPECT_EQ(seen.size(), 1U) << "out of the band";
}

TEST_F(WheelMonitorsTest, NotchesThatPassAndOthersAreToldApart) {
    Probe probe;
    const auto made = heldTap(probe);
    for (int i = 0; i < 20; ++i) {
        probe.consumes = i % 2 == 0;
        turn(probe, 1, probe.consumes ? 4 : 5);
    }
    awaitEnd();
    ASSERT_EQ(seen.size(), 10U);
    for (const MonitoredEvent& event : seen) {
        EXPECT_EQ(event.deltaY, -1);
    }
    EXPECT_EQ(passed(), 10);
}

TEST_F(WheelMonitorsTest, ATapThatTakesTooLongConsumesNothing) {
    Probe probe;
    const auto made = heldTap(probe);
    bool hasWaited = false;
    probe.meanwhile = [&] { // it is asked, and waits until the press has passed without it
        hasWaited = true;
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (client.wheelPresses() == 0 && std::chrono::steady_clock::now() < limit) {
        }
    };
    client.pressWheel(5);
    EXPECT_TRUE(waitUntil([&] { return hasWaited && !probe.told.empty(); }));
    awaitEnd();
    EXPECT_EQ(seen.size(), 1U);
}

TEST_F(WheelMonitorsTest, WhatWaitsIsToldWhenTheTapGoes) {
    Probe probe{.consumes = false};
    auto made = heldTap(probe);
    client.pressWheel(5);
    made.reset();
    awaitEnd();
    EXPECT_EQ(seen.size(), 1U);
}

} // namespace
} // namespace quillon
