// Monitors of scrolling, and how devices number their buttons.
#include "MonitorBench.h"

#include "Platform/Linux/x11/DeviceButtons.h"

namespace quillon {
namespace {

constexpr std::uint64_t scrolls = eventMask(EventType::scrollWheel);
constexpr std::uint64_t leftDowns = eventMask(EventType::leftMouseDown);

struct ScrollMonitorsTest : MonitorBench {
    const xcb_input_device_id_t pointer = masterPointer();
    const xcb_input_device_id_t injected = 4; // of the server's pointers the one that XTEST moves

    /// What a notch is told as: how far up and to the right.
    std::pair<double, double> told(std::uint8_t button) {
        events.clear();
        notch(button);
        if (!waitUntil([this] { return !events.empty(); }) || !settle() || events.size() != 1) {
            ADD_FAILURE() << "told " << events.size() << " times of " << int{button};
            return {};
        }
        return {events[0].deltaY, events[0].deltaX};
    }
    void swapButtons(xcb_input_device_id_t device, int first, int second) const {
        auto map = buttonMap(*user.connection, device);
        ASSERT_GE(map.size(), 7U);
        std::swap(map[static_cast<std::size_t>(first - 1)],
                  map[static_cast<std::size_t>(second - 1)]);
        const XcbOwned<xcb_input_set_device_button_mapping_reply_t> done(
            xcb_input_set_device_button_mapping_reply(
                user.connection->get(),
                xcb_input_set_device_button_mapping(
                    user.connection->get(), static_cast<std::uint8_t>(device),
                    static_cast<std::uint8_t>(map.size()), map.data()),
                nullptr));
        ASSERT_TRUE(done && done->status == XCB_MAPPING_STATUS_SUCCESS);
    }
};

constexpr std::pair<double, double> up{1, 0};
constexpr std::pair<double, double> down{-1, 0};
constexpr std::pair<double, double> left{0, -1};
constexpr std::pair<double, double> right{0, 1};

TEST_F(ScrollMonitorsTest, EachNotchIsToldOnce) {
    const auto held = monitor();
    moveTo(600, 400);
    EXPECT_EQ(told(4), up);
    EXPECT_EQ(told(5), down);
    EXPECT_EQ(told(6), left);
    EXPECT_EQ(told(7), right);
    EXPECT_EQ(events[0].scrollingDeltaX, 1);
    constexpr int many = 200;
    for (int i = 0; i < many; ++i) {
        notch(5);
    }
    EXPECT_TRUE(waitUntil([&] { return seen.size() >= 4 + many; }));
    EXPECT_TRUE(settle());
    EXPECT_EQ(seen.size(), 4U + many);
}

TEST_F(ScrollMonitorsTest, NotchesOverThisProgramAreNotTold) {
    const auto held = monitor();
    const auto window = own.show(100, 100, 100);
    const Types one{EventType::scrollWheel};
    EXPECT_EQ(seenOfClickAt(150, 150, 4), Types{});
    EXPECT_EQ(seenOfClickAt(250, 150, 4), one);
    EXPECT_EQ(seenOfClickAt(150, 150, 4), Types{}) << "at once, though it was known of elsewhere";
    static_cast<void>(foreign.show(10, 10, 80, window));
    EXPECT_EQ(seenOfClickAt(151, 150, 4), one) << "another's, within this program's";
}

TEST_F(ScrollMonitorsTest, AWheelMayBeTurnedOverByItsDeviceOrByThePointer) {
    const auto held = monitor();
    moveTo(600, 400);
    EXPECT_EQ(told(4), up);
    swapButtons(injected, 4, 5);
    EXPECT_EQ(told(4), down);
    swapButtons(pointer, 4, 5);
    EXPECT_EQ(told(4), up) << "twice";
    swapButtons(injected, 4, 5);
    EXPECT_EQ(told(4), down);
    swapButtons(pointer, 4, 5);
    EXPECT_EQ(told(4), up);
    swapButtons(injected, 6, 7);
    EXPECT_EQ(told(6), right);
}

TEST_F(ScrollMonitorsTest, ButtonsAreKnownByTheNumberForApplications) {
    const auto held = monitor();
    moveTo(600, 400);
    const auto number = [this](std::uint8_t button) {
        events.clear();
        click(button);
        EXPECT_TRUE(waitUntil([this] { return events.size() == 2; }));
        return static_cast<unsigned>(events.empty() ? MouseButton{99} : events[0].buttonNumber);
    };
    EXPECT_EQ(number(1), 0U);
    EXPECT_EQ(number(3), 1U);
    EXPECT_EQ(number(2), 2U);
    EXPECT_EQ(number(8), 3U);
    EXPECT_EQ(number(9), 4U);
    swapButtons(injected, 1, 3);
    EXPECT_EQ(number(1), 1U);
    EXPECT_EQ(events[0].type, EventType::rightMouseDown);
    swapButtons(injected, 2, 4);
    EXPECT_EQ(number(4), 2U) << "a wheel's button that the user made a button of";
}

TEST_F(ScrollMonitorsTest, DevicesThatComeAreFollowedToo) {
    const auto held = monitor();
    EXPECT_TRUE(settle());
    const auto before = devices(XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER);
    // A second pointer, with an injecting device of its own.
    struct {
        xcb_input_add_master_t change{.type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_ADD_MASTER,
                                      .len = 3,
                                      .name_len = 3,
                                      .send_core = 0,
                                      .enable = 1};
        char name[4] = "two";
    } request;
    const XcbOwned<xcb_generic_error_t> refused(
        xcb_request_check(user.connection->get(),
                          xcb_input_xi_change_hierarchy_checked(
                              user.connection->get(), 1,
                              reinterpret_cast<const xcb_input_hierarchy_change_t*>(&request))));
    ASSERT_FALSE(refused);
    const auto slaves = devices(XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER);
    ASSERT_EQ(slaves.size(), before.size() + 1);
    const xcb_input_device_id_t second = slaves.back();
    const auto toldOfSecond = [&](std::uint8_t button) {
        events.clear();
        const auto* extension = xcb_get_extension_data(user.connection->get(), &xcb_input_id);
        for (const int type : {XCB_INPUT_DEVICE_BUTTON_PRESS, XCB_INPUT_DEVICE_BUTTON_RELEASE}) {
            xcb_test_fake_input(
                user.connection->get(), static_cast<std::uint8_t>(extension->first_event + type),
                button, XCB_CURRENT_TIME, XCB_NONE, 0, 0, static_cast<std::uint8_t>(second));
        }
        user.connection->sync();
        EXPECT_TRUE(waitUntil([this] { return !events.empty(); }));
        return events.empty() ? 0 : events[0].deltaY;
    };
    EXPECT_EQ(toldOfSecond(4), 1);
    swapButtons(second, 4, 5);
    EXPECT_EQ(toldOfSecond(4), -1);
    moveTo(600, 400);
    EXPECT_EQ(told(4), up) << "of the first";
}

TEST_F(ScrollMonitorsTest, MotionWakesNobody) {
    const auto held = monitor();
    EXPECT_TRUE(settle());
    for (std::int16_t x = 0; x < 20; ++x) {
        moveTo(x, 300);
    }
    EXPECT_FALSE(isWoken());
}

TEST_F(ScrollMonitorsTest, NothingWakesForThoseThatAreNotArmed) {
    const auto ofScrolls = monitor(scrolls);
    const auto ofClicks = monitor(leftDowns | eventMask(EventType::leftMouseUp));
    moveTo(600, 400);
    monitors.setArmed(*ofScrolls, false);
    monitors.setArmed(*ofClicks, false);
    EXPECT_TRUE(settle());
    notch(4);
    click(1);
    EXPECT_FALSE(isWoken());
    monitors.setArmed(*ofClicks, true);
    EXPECT_EQ(seenOfClickAt(600, 400), leftClick);
    notch(4);
    EXPECT_EQ(seenOfClickAt(600, 400), leftClick) << "without the notch";
    monitors.setArmed(*ofClicks, false);
    monitors.setArmed(*ofScrolls, true);
    EXPECT_EQ(told(4), up);
    EXPECT_EQ(seenOfClickAt(600, 400), Types{EventType::scrollWheel}) << "the one just told";
}

TEST_F(ScrollMonitorsTest, ToArmOneForgetsNothingThatAnotherIsNotToHear) {
    const auto ofClicks = monitor(eventMask(EventType::otherMouseDown));
    const auto ofScrolls = monitor(scrolls | eventMask(EventType::rightMouseUp));
    moveTo(600, 400);
    monitors.setArmed(*ofScrolls, false);
    postedEvents.expect(2, true); // and it is still on its way
    monitors.setArmed(*ofScrolls, true);
    click(2);
    click(8);
    EXPECT_TRUE(waitUntil([this] { return !events.empty(); }));
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(static_cast<unsigned>(events[0].buttonNumber), 3U);
}

} // namespace
} // namespace quillon
