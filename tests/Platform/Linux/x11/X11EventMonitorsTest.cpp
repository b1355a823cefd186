#include "Platform/Linux/x11/X11EventMonitors.h"

#include "support/XServer.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <vector>

#include <xcb/xtest.h>

namespace quillon {
namespace {

using Types = std::vector<EventType>;

constexpr std::uint64_t everyButton = ~std::uint64_t{0};
const Types leftClick{EventType::leftMouseDown, EventType::leftMouseUp};
const Types leftUpAndDown{EventType::leftMouseUp, EventType::leftMouseDown};
const Types rightClick{EventType::rightMouseDown, EventType::rightMouseUp};
const Types otherClick{EventType::otherMouseDown, EventType::otherMouseUp};

/// A program with windows.
struct Program {
    std::unique_ptr<X11Connection> connection = X11Connection::open();

    [[nodiscard]] xcb_window_t show(std::int16_t x, std::int16_t y, std::uint16_t size,
                                    xcb_window_t parent = XCB_WINDOW_NONE) const {
        const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_BUTTON_PRESS};
        const xcb_window_t window = xcb_generate_id(connection->get());
        xcb_create_window(connection->get(), XCB_COPY_FROM_PARENT, window,
                          parent == XCB_WINDOW_NONE ? connection->root() : parent, x, y, size, size,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
        xcb_map_window(connection->get(), window);
        connection->sync();
        return window;
    }
};

struct X11EventMonitorsTest : testing::Test {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    XServer server;
    Program user;
    Program foreign;
    Program own;
    OwnWindows ownWindows;
    PostedEvents postedEvents;
    CaughtPresses caughtPresses;
    X11EventMonitors monitors{ownWindows, postedEvents, caughtPresses};
    Types seen;

    X11EventMonitorsTest() { ownWindows.add(ResourceRange::of(own.connection->get())); }

    EventMonitorRef monitor(std::uint64_t mask = everyButton) {
        return monitors.addGlobalMonitor(mask, [this](EventType type) { seen.push_back(type); });
    }

    void moveTo(std::int16_t x, std::int16_t y) const {
        xcb_test_fake_input(user.connection->get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME,
                            user.connection->root(), x, y, 0);
        user.connection->sync();
    }
    void fake(std::uint8_t type, std::uint8_t button) const {
        xcb_test_fake_input(user.connection->get(), type, button, XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                            0);
        user.connection->sync();
    }
    void click(std::uint8_t button) const {
        fake(XCB_BUTTON_PRESS, button);
        fake(XCB_BUTTON_RELEASE, button);
    }

    /// What is seen of a click here. A second one, on the bare root window, shows that all has
    /// come.
    Types seenOfClickAt(std::int16_t x, std::int16_t y, std::uint8_t button = 1) {
        constexpr std::int16_t bareX = 1270;
        constexpr std::int16_t bareY = 790;
        constexpr std::uint8_t endMark = 9;
        moveTo(x, y);
        click(button);
        bool ended = false;
        const auto end = monitors.addGlobalMonitor(eventMask(EventType::otherMouseUp),
                                                   [&](EventType) { ended = ended || atEnd_; });
        // What was asked of the first click must not be answered by the second.
        EXPECT_TRUE(settle());
        atEnd_ = true;
        moveTo(bareX, bareY);
        click(endMark);
        EXPECT_TRUE(waitUntil([&] { return ended; }));
        atEnd_ = false;
        if (seen.size() >= 2 && Types(seen.end() - 2, seen.end()) == otherClick) {
            seen.resize(seen.size() - 2);
        }
        return std::exchange(seen, {});
    }

    /// Handles what has arrived: the server has sent it all, for it has answered a later request.
    [[nodiscard]] static bool settle() {
        bool did = true;
        for (int i = 0; did && i < 1000; ++i) {
            did = QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
        }
        return !did;
    }

  private:
    bool atEnd_ = false;
};

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
        EXPECT_EQ(seenOfClickAt(600, 400, button), Types{}) << int{button};
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
    EXPECT_EQ(monitor(eventMask(EventType::scrollWheel)), nullptr);
}

TEST_F(X11EventMonitorsTest, IsNotWokenByWhatNobodyWants) {
    const auto held = monitor(eventMask(EventType::leftMouseUp));
    EXPECT_TRUE(settle());
    fake(XCB_BUTTON_PRESS, 1);
    EXPECT_FALSE(QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents));
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
    EXPECT_FALSE(QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents));
}

TEST_F(X11EventMonitorsTest, HandlersMayAddAndRemoveMonitors) {
    std::optional<EventMonitorRef> held;
    EventMonitorRef other;
    int calls = 0;
    held = monitors.addGlobalMonitor(everyButton, [&](EventType) {
        ++calls;
        held.reset();
        other = monitor();
    });
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
    const auto removeAll = [&](EventType) {
        ++calls;
        first.reset();
        second.reset();
    };
    first = monitors.addGlobalMonitor(everyButton, removeAll);
    second = monitors.addGlobalMonitor(everyButton, removeAll);
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
    EXPECT_EQ(monitors.addGlobalMonitor(everyButton, [](EventType) {}), nullptr);
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
    auto held = monitors->addGlobalMonitor(everyButton, [](EventType) {});
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
