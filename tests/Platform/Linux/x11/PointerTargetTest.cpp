#include "Platform/Linux/x11/PointerTarget.h"

#include "MonitorBench.h"

namespace quillon {
namespace {

struct PointerTargetTest : MonitorBench {
    PointerTarget target{*own.connection};
    xcb_input_device_id_t master = 0;
    xcb_window_t outer = foreign.show(100, 100, 200);
    xcb_window_t middle = foreign.show(10, 10, 150, outer);
    xcb_window_t inner = foreign.show(10, 10, 100, middle);

    PointerTargetTest() {
        const XcbOwned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
            own.connection->get(), xcb_input_xi_query_version(own.connection->get(), 2, 3),
            nullptr));
        master = masterPointer();
        moveTo(150, 150);
    }

    /// How many requests it takes.
    template <class Action>
    unsigned requests(const Action& action) {
        const auto number = [this] { return xcb_no_operation(own.connection->get()).sequence; };
        const unsigned before = number();
        action();
        return number() - before - 1;
    }
    unsigned requestsOfLook(xcb_window_t expected) {
        return requests([&] { EXPECT_EQ(target.recentWindow(master), expected); });
    }
};

TEST_F(PointerTargetTest, IsTheInnermostWindow) {
    EXPECT_EQ(target.window(master), inner);
    moveTo(280, 280);
    EXPECT_EQ(target.window(master), outer);
    moveTo(600, 400);
    EXPECT_EQ(target.window(master), own.connection->root());
}

TEST_F(PointerTargetTest, OneRequestPerLevelAndOneWhereThePointerStays) {
    EXPECT_EQ(requests([&] { EXPECT_EQ(target.window(master), inner); }), 4U);
    EXPECT_EQ(requestsOfLook(inner), 1U);
    moveTo(151, 150);
    EXPECT_EQ(requestsOfLook(inner), 4U);
    EXPECT_EQ(requestsOfLook(inner), 1U);
}

TEST_F(PointerTargetTest, WindowsThatComeAreNoticed) {
    EXPECT_EQ(target.recentWindow(master), inner);
    const auto above = own.show(140, 140, 50);
    EXPECT_EQ(target.recentWindow(master), above);
    const auto within = own.show(0, 0, 30, above);
    EXPECT_TRUE(waitUntil([&] { return target.recentWindow(master) == within; }))
        << "within another one only after a moment";
}

} // namespace
} // namespace quillon
