// A tap of the left button on a real X server, and what tools post.

#include "Platform/Linux/x11/X11EventMonitors.h"

#include "TapBench.h"

#include <algorithm>

#include <xcb/xtest.h>

namespace quillon {
namespace {

using Buttons = std::vector<std::string>;

const Buttons wholeClick{"press 1", "release 1"};
const Buttons middleClick{"press 2", "release 2"};

bool everywhere(Point, std::span<const Rect>) { return true; }

struct LeftPressTest : TapBench {
    OwnWindows ownWindows;
    X11EventMonitors monitors{ownWindows, postedEvents, caughtPresses};
    std::vector<EventType> seen;

    LeftPressTest() { client.movePointer(600, 300); }

    /// Armed, and the button is held.
    EventTapRef pressTap(Probe& probe) {
        auto made = tap(probe, everywhere, EventType::leftMouseDown);
        EXPECT_TRUE(waitUntilLeftHeld());
        return made;
    }
    /// To look is to take the button for a moment, which must not be that in which the holder does.
    bool waitUntilLeftHeld() {
        bool isSettled = false;
        caughtPresses.whenSettled([&] { isSettled = true; });
        return waitUntil([&] { return isSettled; }) && !client.canGrabLeft();
    }
    bool waitUntilLeftFree() {
        return waitUntil([this] { return client.canGrabLeft(); });
    }
    void post(EventType type, MouseButton button) {
        events.post(TapLocation::hid, *events.createMouseEvent(type, {1, 2}, button));
    }
    void middleDown() { post(EventType::otherMouseDown, MouseButton::middle); }
    void middleUp() { post(EventType::otherMouseUp, MouseButton::middle); }
    void press() { client.fakeButton(XCB_BUTTON_PRESS, 1); }
    void release() { client.fakeButton(XCB_BUTTON_RELEASE, 1); }

    /// The client gets these and no others: a click made after everything else ends them.
    void expectButtons(Buttons expected) {
        constexpr std::uint8_t end = 9;
        client.fakeButton(XCB_BUTTON_PRESS, end);
        client.fakeButton(XCB_BUTTON_RELEASE, end);
        EXPECT_TRUE(waitUntil([this] {
            return !client.buttons().empty() && client.buttons().back() == "release 9";
        }));
        expected.insert(expected.end(), {"press 9", "release 9"});
        EXPECT_EQ(client.buttons(), expected);
        EXPECT_EQ(client.buttonsDown(), 0U);
    }
    EventMonitorRef monitor() {
        return monitors.addGlobalMonitor(
            ~std::uint64_t{0}, [this](const MonitoredEvent& event) { seen.push_back(event.type); },
            {});
    }
};

TEST_F(LeftPressTest, HoldsTheButtonOnlyWhileArmed) {
    Probe probe;
    auto made = tap(probe, nullptr, EventType::leftMouseDown);
    EXPECT_TRUE(client.canGrabLeft());
    events.setArmedAt(*made, everywhere);
    EXPECT_TRUE(waitUntilLeftHeld());
    EXPECT_TRUE(client.canGrabWheel()) << "nothing else";
    events.setArmedAt(*made, nullptr);
    EXPECT_TRUE(waitUntilLeftFree());
    events.setArmedAt(*made, everywhere);
    EXPECT_TRUE(waitUntilLeftHeld());
    events.enableTap(*made, false);
    EXPECT_TRUE(waitUntilLeftFree());
    events.enableTap(*made, true);
    EXPECT_TRUE(waitUntilLeftHeld());
    made.reset();
    EXPECT_TRUE(waitUntilLeftFree());
}

TEST_F(LeftPressTest, PassesExactlyOnce) {
    Probe probe{.consumes = false};
    const auto made = pressTap(probe);
    Buttons expected;
    for (int i = 0; i < 20; ++i) {
        press();
        ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == expected.size() + 1; }));
        release();
        expected.insert(expected.end(), wholeClick.begin(), wholeClick.end());
        ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == expected.size(); }));
    }
    expectButtons(expected);
    EXPECT_EQ(probe.places.size(), 20U);
    EXPECT_EQ(probe.places.back(), (Point{600, 500}));
    EXPECT_EQ(probe.eventPlaces.back(), (Point{600, 300}));
}

TEST_F(LeftPressTest, ConsumesPressAndReleaseAlsoOfALongOne) {
    Probe probe;
    const auto made = pressTap(probe);
    press();
    ASSERT_TRUE(waitUntil([&] { return probe.places.size() == 1; }));
    EXPECT_TRUE(waitUntil([&] { return client.canGrabPointer(); })) << "nobody has the pointer";
    EXPECT_EQ(client.buttonsDown(), 0U) << "though the finger is still on it";
    release();
    expectButtons({});
}

TEST_F(LeftPressTest, WhatTheCallbackPostsComesInsteadAndInOrder) {
    Probe probe;
    EventRef empty;
    probe.meanwhile = [&] {
        empty = events.createEvent();
        middleDown();
        middleUp();
    };
    const auto made = pressTap(probe);
    press();
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 2; }));
    EXPECT_EQ(client.latestState(), unsigned{XCB_BUTTON_MASK_2}) << "the left one is not down";
    release();
    expectButtons(middleClick);
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->location(), (Point{600, 300}));
}

TEST_F(LeftPressTest, ModifiersThatAreHeldTravelAlong) {
    Probe probe;
    probe.meanwhile = [this] {
        middleDown();
        middleUp();
    };
    const auto made = pressTap(probe);
    constexpr xcb_keycode_t control = 37; // on every X server's keyboard
    const auto fakeKey = [&](std::uint8_t type) {
        xcb_test_fake_input(client.connection().get(), type, control, XCB_CURRENT_TIME, XCB_NONE, 0,
                            0, 0);
    };
    fakeKey(XCB_KEY_PRESS);
    press();
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 2; }));
    EXPECT_EQ(client.latestState(), unsigned{XCB_MOD_MASK_CONTROL} | XCB_BUTTON_MASK_2);
    release();
    probe.consumes = false;
    probe.meanwhile = nullptr;
    press();
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 3; }));
    EXPECT_EQ(client.latestState(), unsigned{XCB_MOD_MASK_CONTROL});
    release();
    fakeKey(XCB_KEY_RELEASE);
    expectButtons({"press 2", "release 2", "press 1", "release 1"});
}

TEST_F(LeftPressTest, ReleaseThatIsFasterThanTheAnswerIsConsumedToo) {
    Probe probe;
    probe.meanwhile = [&] {
        release();
        client.connection().sync();
        middleDown();
    };
    const auto made = pressTap(probe);
    press();
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 1; }));
    middleUp();
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 2; }));
    expectButtons(middleClick);
}

TEST_F(LeftPressTest, OtherButtonPressedMeanwhileIsNotLost) {
    Probe probe;
    probe.meanwhile = [&] {
        client.fakeButton(XCB_BUTTON_PRESS, 3);
        client.connection().sync();
    };
    const auto made = pressTap(probe);
    press();
    ASSERT_TRUE(waitUntil([&] { return !client.buttons().empty(); }));
    EXPECT_EQ(client.buttons().front(), "press 3");
    client.fakeButton(XCB_BUTTON_RELEASE, 3);
    release();
    EXPECT_TRUE(waitUntil([&] { return client.buttonsDown() == 0; }));
    const auto& all = client.buttons();
    EXPECT_EQ(std::count(all.begin(), all.end(), "press 1"), 0);
    EXPECT_TRUE(waitUntil([&] { return client.buttons().back() == "release 3"; }));
}

TEST_F(LeftPressTest, DisarmedWhileThePressIsAskedAbout) {
    Probe probe{.consumes = false};
    EventTapRef made;
    probe.meanwhile = [&] { events.setArmedAt(*made, nullptr); };
    made = pressTap(probe);
    press();
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 1; }));
    EXPECT_TRUE(waitUntilLeftFree());
    release();
    expectButtons(wholeClick);
    press();
    release();
    ASSERT_TRUE(waitUntil([&] { return client.buttons().back() == "release 1"; }));
    EXPECT_EQ(probe.places.size(), 1U) << "and is not asked again";
}

TEST_F(LeftPressTest, PressThatMeetsTheDisarmingIsNotLost) {
    Probe probe{.consumes = false};
    const auto made = pressTap(probe);
    Buttons expected;
    for (int i = 0; i < 100; ++i) {
        events.setArmedAt(*made, nullptr);
        press();
        release();
        events.setArmedAt(*made, everywhere);
        expected.insert(expected.end(), wholeClick.begin(), wholeClick.end());
        ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == expected.size(); })) << i;
    }
    expectButtons(expected);
}

TEST_F(LeftPressTest, TapThatAnswersTooLateIsDisabledAndThePressPasses) {
    Probe probe;
    const auto made = pressTap(probe);
    bool passed = false;
    probe.meanwhile = [&] {
        middleDown();
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!passed && std::chrono::steady_clock::now() < deadline) {
            passed = client.wheelPresses() == 1;
        }
    };
    press();
    ASSERT_TRUE(waitUntil([&] { return !probe.told.empty(); }));
    EXPECT_TRUE(passed);
    EXPECT_EQ(probe.told, (std::vector{EventType::tapDisabledByTimeout}));
    EXPECT_EQ(lineCount(), 1U);
    EXPECT_TRUE(waitUntilLeftFree()) << "a disabled tap holds nothing";
    middleUp();
    release();
    expectButtons(wholeClick);

    probe.meanwhile = nullptr;
    events.enableTap(*made, true);
    ASSERT_TRUE(waitUntilLeftHeld());
    press();
    EXPECT_TRUE(waitUntil([&] { return probe.places.size() == 2; }));
}

TEST_F(LeftPressTest, BusyMainThreadCostsNoPress) {
    Probe probe;
    const auto made = pressTap(probe);
    press();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (client.buttons().empty() && std::chrono::steady_clock::now() < deadline) {
    }
    EXPECT_EQ(client.buttons(), Buttons{"press 1"});
    release();
    ASSERT_TRUE(waitUntil([&] { return !probe.told.empty(); }));
    EXPECT_TRUE(probe.places.empty());
    expectButtons(wholeClick);
}

TEST_F(LeftPressTest, PassesWhereItIsNotArmed) {
    Probe probe;
    const auto made = tap(probe, leftBand, EventType::leftMouseDown);
    ASSERT_TRUE(waitUntilLeftHeld());
    press();
    release();
    expectButtons(wholeClick);
    EXPECT_TRUE(probe.places.empty());
}

TEST_F(LeftPressTest, LeavesTheButtonToAProgramThatHasIt) {
    auto other = std::make_unique<XClient>();
    other->grabLeft();
    other->connection().sync();
    Probe probe;
    const auto made = tap(probe, everywhere, EventType::leftMouseDown);
    ASSERT_TRUE(waitUntil([&] { return lineCount() == 1; }));
    events.setArmedAt(*made, nullptr);
    events.setArmedAt(*made, everywhere);
    other.reset();
    ASSERT_TRUE(waitUntil([&] {
        events.setArmedAt(*made, everywhere);
        return !client.canGrabLeft();
    }));
    EXPECT_EQ(lineCount(), 1U);
}

TEST_F(LeftPressTest, LeftHandedPeopleHaveTheirLeftButtonElsewhere) {
    const XcbOwned<xcb_get_pointer_mapping_reply_t> before(xcb_get_pointer_mapping_reply(
        client.connection().get(), xcb_get_pointer_mapping(client.connection().get()), nullptr));
    std::vector<std::uint8_t> map(xcb_get_pointer_mapping_map(before.get()),
                                  xcb_get_pointer_mapping_map(before.get()) + before->map_len);
    std::swap(map[0], map[2]);
    std::swap(map[1], map[7]);
    const XcbOwned<xcb_set_pointer_mapping_reply_t> done(xcb_set_pointer_mapping_reply(
        client.connection().get(),
        xcb_set_pointer_mapping(client.connection().get(), before->map_len, map.data()), nullptr));
    ASSERT_TRUE(done && done->status == XCB_MAPPING_STATUS_SUCCESS);
    Probe probe;
    probe.meanwhile = [&] {
        middleDown();
        middleUp();
    };
    const auto made = pressTap(probe);
    client.fakeButton(XCB_BUTTON_PRESS, 3);
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 2; }));
    client.fakeButton(XCB_BUTTON_RELEASE, 3);
    expectButtons(middleClick);
}

TEST_F(LeftPressTest, WorksBesideTheWheel) {
    Probe scrolls;
    Probe presses;
    const auto a = heldTap(scrolls);
    const auto b = pressTap(presses);
    client.pressWheel(4);
    EXPECT_TRUE(waitUntil([&] { return scrolls.deltas.size() == 1; }));
    press();
    EXPECT_TRUE(waitUntil([&] { return presses.places.size() == 1; }));
    release();
    client.pressWheel(5);
    EXPECT_TRUE(waitUntil([&] { return scrolls.deltas.size() == 2; }));
    client.movePointer(600, 300);
    EXPECT_TRUE(waitUntilFree());
    EXPECT_FALSE(client.canGrabLeft());
    expectButtons({});
}

TEST_F(LeftPressTest, PostedPressesDoNotComeBackToTheTap) {
    Probe probe;
    const auto made = pressTap(probe);
    post(EventType::leftMouseDown, MouseButton::left);
    post(EventType::leftMouseUp, MouseButton::left);
    post(EventType::rightMouseDown, MouseButton::right);
    post(EventType::rightMouseUp, MouseButton::right);
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 4; }));
    expectButtons({"press 1", "release 1", "press 3", "release 3"});
    EXPECT_TRUE(probe.places.empty());
    EXPECT_FALSE(client.canGrabLeft()) << "real ones still do";
}

TEST_F(LeftPressTest, PostedReleaseWithoutAPressIsNothing) {
    Probe probe;
    const auto made = pressTap(probe);
    middleUp();
    middleDown();
    middleDown();
    middleUp();
    middleUp();
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 2; }));
    expectButtons(middleClick);
}

TEST_F(LeftPressTest, PostedButtonComesUpWhenTheTapsEnd) {
    Probe probe;
    CaughtPresses otherPresses;
    auto services = std::make_unique<X11EventServices>(
        loop, diagnostics, displays, [this] { return session.isGranted(); }, QUILLON_WATCHDOG,
        postedEvents, otherPresses);
    ASSERT_TRUE(session.isProcessTrusted());
    auto made =
        services->createTap(TapLocation::hid, TapPlacement::headInsert, TapOptions::filtering,
                            eventMask(EventType::leftMouseDown), Probe::callback, &probe, "probe");
    const auto down =
        services->createMouseEvent(EventType::otherMouseDown, {}, MouseButton::middle);
    services->post(TapLocation::hid, *down);
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 1; }));
    made.reset();
    services.reset();
    EXPECT_TRUE(waitUntil([&] { return client.buttonsDown() == 0; }));
    expectButtons(middleClick);
}

TEST_F(LeftPressTest, NothingIsPostedWithoutATap) {
    middleDown();
    middleUp();
    expectButtons({});
}

TEST_F(LeftPressTest, NoEventCanBeMadeWithoutAServer) {
    X11Displays nothing;
    CaughtPresses otherPresses;
    X11EventServices blind(
        loop, diagnostics, nothing, [] { return false; }, QUILLON_WATCHDOG, postedEvents,
        otherPresses);
    EXPECT_EQ(blind.createEvent(), nullptr);
    EXPECT_TRUE(blind.createMouseEvent(EventType::otherMouseDown, {}, MouseButton::middle));
}

TEST_F(LeftPressTest, MonitorsHearNothingOfWhatIsPostedButOfOthersThatInject) {
    Probe probe;
    const auto made = pressTap(probe);
    auto listening = monitor();
    for (int i = 0; i < 3; ++i) {
        middleDown();
        middleUp();
    }
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 6; }));
    client.fakeButton(XCB_BUTTON_PRESS, 2);
    client.fakeButton(XCB_BUTTON_RELEASE, 2);
    ASSERT_TRUE(waitUntil([&] { return seen.size() >= 2; }));
    EXPECT_EQ(seen, (std::vector{EventType::otherMouseDown, EventType::otherMouseUp}));

    // What is posted while nobody listens must not be missed by those who listen later.
    listening.reset();
    middleDown();
    middleUp();
    ASSERT_TRUE(waitUntil([&] { return client.buttons().size() == 10; }));
    listening = monitor();
    client.fakeButton(XCB_BUTTON_PRESS, 2);
    client.fakeButton(XCB_BUTTON_RELEASE, 2);
    EXPECT_TRUE(waitUntil([&] { return seen.size() == 4; }));
}

TEST_F(LeftPressTest, MonitorsHearOnlyOfPressesThatPass) {
    Probe probe;
    const auto made = pressTap(probe);
    const auto listening = monitor();
    std::vector<EventType> expected;
    for (int i = 0; i < 20; ++i) {
        probe.consumes = i % 3 != 0;
        const auto asked = probe.places.size();
        press();
        ASSERT_TRUE(waitUntil([&] { return probe.places.size() > asked; }));
        release();
        client.connection().sync();
        client.fakeButton(XCB_BUTTON_PRESS, 3);
        client.fakeButton(XCB_BUTTON_RELEASE, 3);
        if (!probe.consumes) {
            expected.insert(expected.end(), {EventType::leftMouseDown, EventType::leftMouseUp});
        }
        expected.insert(expected.end(), {EventType::rightMouseDown, EventType::rightMouseUp});
        waitUntil([&] { return seen.size() >= expected.size(); });
        ASSERT_EQ(seen, expected) << i;
    }
    // As while a menu is open: nobody is asked, and still it is heard.
    const XClient menu;
    const XcbOwned<xcb_grab_pointer_reply_t> grab(xcb_grab_pointer_reply(
        menu.connection().get(),
        xcb_grab_pointer(menu.connection().get(), 0, menu.connection().root(),
                         XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                         XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr));
    ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
    press();
    release();
    expected.insert(expected.end(), {EventType::leftMouseDown, EventType::leftMouseUp});
    EXPECT_TRUE(waitUntil([&] { return seen.size() >= expected.size(); }));
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(probe.places.size(), 20U);
}

} // namespace
} // namespace quillon
