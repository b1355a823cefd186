#include "MonitorBench.h"

#include <optional>

namespace quillon {
namespace {

using X11EventMonitorsTest = MonitorBench;

TEST_F(X11EventMonitorsTest, ReportsClicksOverTheRootWindowOnce) {
    const auto held = monitor();
    ASSERT_TRUE(held);
    EXPECT_EQ(seenOfClickAt(600, 400), leftClick);
    EXPECT_EQ(seenOfClickAt(600, 400, 3), rightClick);
    for (const std::uint8_t button : {2, 8, 9}) {
        EXPECT_EQ(seenOfClickAt(600, 400, button), otherClick) << int{button};
    }
}

TEST_F(X11EventMonitorsTest, TheWheelIsNoButton) {
    const auto held = monitor();
    for (const std::uint8_t button : {4, 5, 6, 7}) {
        EXPECT_EQ(seenOfClickAt(600, 400, button), Types{EventType::scrollWheel}) << int{button};
    }
}

TEST_F(X11EventMonitorsTest, ReportsClicksOnOtherProgramsButNotOnThisOne) {
    const auto held = monitor();
    const auto foreignWindow = foreign.show(100, 100, 200);
    const auto ownWindow = own.show(400, 100, 200);
    EXPECT_EQ(seenOfClickAt(150, 150), leftClick);
    EXPECT_EQ(seenOfClickAt(450, 150), Types{});
    EXPECT_EQ(seenOfClickAt(350, 150), leftClick) << "between them";

    static_cast<void>(own.show(20, 20, 50, foreignWindow));
    EXPECT_EQ(seenOfClickAt(130, 130), Types{}) << "this program's, within another's";
    EXPECT_EQ(seenOfClickAt(190, 190), leftClick) << "beside it";
    static_cast<void>(foreign.show(20, 20, 50, ownWindow));
    EXPECT_EQ(seenOfClickAt(430, 130), leftClick) << "another's, within this program's";

    ownWindows.remove(ResourceRange::of(own.connection->get()));
    EXPECT_EQ(seenOfClickAt(550, 250), leftClick);
}

TEST_F(X11EventMonitorsTest, ReportsClicksWhileAnotherProgramHasThePointer) {
    const auto held = monitor();
    const XcbOwned<xcb_grab_pointer_reply_t> grab(xcb_grab_pointer_reply(
        foreign.connection->get(),
        xcb_grab_pointer(foreign.connection->get(), 0, foreign.connection->root(),
                         XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE,
                         XCB_CURRENT_TIME),
        nullptr));
    ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
    EXPECT_EQ(seenOfClickAt(600, 400), leftClick);
}

TEST_F(X11EventMonitorsTest, KnowsLeftHandedMiceAndThoseThatBecomeIt) {
    const auto swapButtons = [this] {
        const XcbOwned<xcb_get_pointer_mapping_reply_t> before(xcb_get_pointer_mapping_reply(
            user.connection->get(), xcb_get_pointer_mapping(user.connection->get()), nullptr));
        std::vector<std::uint8_t> map(xcb_get_pointer_mapping_map(before.get()),
                                      xcb_get_pointer_mapping_map(before.get()) + before->map_len);
        std::swap(map[0], map[2]);
        const XcbOwned<xcb_set_pointer_mapping_reply_t> done(xcb_set_pointer_mapping_reply(
            user.connection->get(),
            xcb_set_pointer_mapping(user.connection->get(), before->map_len, map.data()), nullptr));
        return done && done->status == XCB_MAPPING_STATUS_SUCCESS;
    };
    ASSERT_TRUE(swapButtons());
    const auto held = monitor();
    EXPECT_EQ(seenOfClickAt(600, 400, 1), rightClick);
    EXPECT_EQ(seenOfClickAt(600, 400, 3), leftClick);
    ASSERT_TRUE(swapButtons());
    EXPECT_EQ(seenOfClickAt(600, 400, 1), leftClick);
    EXPECT_EQ(seenOfClickAt(600, 400, 3), rightClick);
}

TEST_F(X11EventMonitorsTest, ReportsWhatIsAskedFor) {
    const auto held = monitor(eventMask(EventType::rightMouseUp));
    EXPECT_EQ(seenOfClickAt(600, 400, 1), Types{});
    EXPECT_EQ(seenOfClickAt(600, 400, 3), Types{EventType::rightMouseUp});
    EXPECT_EQ(monitor(0), nullptr);
    EXPECT_EQ(monitor(eventMask(EventType::systemDefined)), nullptr);
}

TEST_F(X11EventMonitorsTest, IsNotWokenByWhatNobodyWants) {
    const auto held = monitor(eventMask(EventType::leftMouseUp));
    EXPECT_TRUE(settle());
    fake(XCB_BUTTON_PRESS, 1);
    EXPECT_FALSE(isWoken());
    auto other = monitor(eventMask(EventType::leftMouseDown));
    EXPECT_TRUE(settle());
    fake(XCB_BUTTON_RELEASE, 1);
    fake(XCB_BUTTON_PRESS, 1);
    EXPECT_TRUE(waitUntil([&] { return seen.size() == 2; }));
    EXPECT_EQ(seen, leftUpAndDown);
    other.reset();
    EXPECT_TRUE(settle());
    EXPECT_TRUE(settle());
    fake(XCB_BUTTON_RELEASE, 1);
    fake(XCB_BUTTON_PRESS, 1);
    EXPECT_TRUE(waitUntil([&] { return seen.size() == 3; }));
}

TEST_F(X11EventMonitorsTest, ReportsNothingToAMonitorThatIsGone) {
    auto held = monitor();
    click(1);
    held.reset();
    EXPECT_EQ(seenOfClickAt(600, 400), Types{}) << "not even what was on its way";
}

TEST_F(X11EventMonitorsTest, WithoutMonitorsNothingArrives) {
    auto held = monitor();
    held.reset();
    EXPECT_TRUE(settle());
    click(1);
    EXPECT_FALSE(isWoken());
}

TEST_F(X11EventMonitorsTest, HandlersMayAddAndRemoveMonitors) {
    std::optional<EventMonitorRef> held;
    EventMonitorRef other;
    int calls = 0;
    held = monitors.addGlobalMonitor(everything,
                                     [&](const MonitoredEvent&) {
                                         ++calls;
                                         held.reset();
                                         other = monitor();
                                     },
                                     {});
    click(1);
    EXPECT_TRUE(waitUntil([&] { return !seen.empty(); }));
    EXPECT_EQ(std::exchange(seen, {}), Types{EventType::leftMouseUp});
    EXPECT_EQ(seenOfClickAt(600, 400, 3), rightClick);
    EXPECT_EQ(calls, 1);
}

TEST_F(X11EventMonitorsTest, AllMonitorsGoInTheMiddleOfAnEvent) {
    EventMonitorRef first;
    EventMonitorRef second;
    int calls = 0;
    const auto removeAll = [&](const MonitoredEvent&) {
        ++calls;
        first.reset();
        second.reset();
    };
    first = monitors.addGlobalMonitor(everything, removeAll, {});
    second = monitors.addGlobalMonitor(everything, removeAll, {});
    click(1);
    EXPECT_TRUE(waitUntil([&] { return calls > 0; }));
    EXPECT_TRUE(settle());
    EXPECT_EQ(calls, 1);
}

TEST_F(X11EventMonitorsTest, SurvivesTheServer) {
    auto held = monitor();
    server.kill();
    EXPECT_TRUE(settle());
    EXPECT_EQ(monitor(), nullptr);
    held.reset();
    const XServer another;
    held = monitor();
    EXPECT_TRUE(held);
}

TEST(X11EventMonitors, NullWithoutAServer) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    setenv("DISPLAY", ":65000", 1);
    const OwnWindows none;
    PostedEvents nothing;
    CaughtPresses noPresses;
    X11EventMonitors monitors(none, nothing, noPresses);
    EXPECT_EQ(monitors.addGlobalMonitor(everything, [](const MonitoredEvent&) {}, {}), nullptr);
}

TEST(X11EventMonitors, MonitorsMayOutliveThem) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const XServer server;
    const OwnWindows none;
    PostedEvents nothing;
    CaughtPresses noPresses;
    auto monitors = std::make_unique<X11EventMonitors>(none, nothing, noPresses);
    auto held = monitors->addGlobalMonitor(everything, [](const MonitoredEvent&) {}, {});
    ASSERT_TRUE(held);
    monitors.reset();
    held.reset();
}

TEST(ResourceRange, HoldsTheIdsOfOneConnection) {
    const ResourceRange range{0x0600000, 0x01FFFFF};
    EXPECT_TRUE(range.contains(0x0600000));
    EXPECT_TRUE(range.contains(0x07FFFFF));
    EXPECT_FALSE(range.contains(0x0800000));
    EXPECT_FALSE(range.contains(0x05FFFFF));
}

} // namespace
} // namespace quillon
