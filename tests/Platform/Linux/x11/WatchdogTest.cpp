// The watchdog process on a real X server, with this test as the program that it watches.

#include "Platform/Linux/x11/Watchdog.h"

#include "Platform/Linux/x11/PointerProbe.h"
#include "support/XServer.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <xcb/xtest.h>

namespace quillon {
namespace {

using namespace std::chrono_literals;

/// Whether the descriptor becomes readable within this time.
bool isReadable(int descriptor, std::chrono::milliseconds limit) {
    pollfd source{descriptor, POLLIN, 0};
    return poll(&source, 1, static_cast<int>(limit.count())) == 1;
}

struct WatchdogTest : testing::Test {
    XServer server;
    std::unique_ptr<X11Connection> holder = X11Connection::open();
    PointerProbe probe{*holder};
    std::unique_ptr<X11Connection> judge = X11Connection::open();
    PointerProbe eye{*judge};

    WatchdogTest() {
        for (const auto* connection : {holder.get(), judge.get()}) {
            const XcbOwned<xcb_input_xi_query_version_reply_t> version(
                xcb_input_xi_query_version_reply(
                    connection->get(), xcb_input_xi_query_version(connection->get(), 2, 3),
                    nullptr));
        }
        holder->sync();
    }

    [[nodiscard]] std::unique_ptr<Watchdog> start(const char* program = QUILLON_WATCHDOG) const {
        return Watchdog::start(program, probe.window());
    }
    [[nodiscard]] bool isHolderKilled(std::chrono::milliseconds limit = 10s) const {
        return isReadable(holder->descriptor(), limit) &&
               (xcb_poll_for_event(holder->get()), holder->isBroken());
    }
};

TEST_F(WatchdogTest, ClosesTheConnectionThatHoldsInSilence) {
    const auto watchdog = start();
    ASSERT_TRUE(watchdog);
    ASSERT_TRUE(watchdog->tell({1, 0}));
    EXPECT_TRUE(isHolderKilled());
    EXPECT_TRUE(isReadable(watchdog->descriptor(), 10s)) << "it ends with its work";
}

TEST_F(WatchdogTest, LeavesAloneWhoHoldsNothing) {
    const auto watchdog = start();
    ASSERT_TRUE(watchdog);
    ASSERT_TRUE(watchdog->tell({1, 0}));
    ASSERT_TRUE(watchdog->tell({0, 0}));
    EXPECT_EQ(watchdog->nextTell(), Watchdog::Clock::time_point::max());
    EXPECT_FALSE(isHolderKilled(4 * watchdogPatience));
    EXPECT_FALSE(isReadable(watchdog->descriptor(), 0ms));
}

TEST_F(WatchdogTest, LeavesAloneWhoSpeaks) {
    const auto watchdog = start();
    ASSERT_TRUE(watchdog);
    const auto end = Watchdog::Clock::now() + 4 * watchdogPatience;
    while (Watchdog::Clock::now() < end) {
        ASSERT_TRUE(watchdog->tell({1, 0}));
        const auto wait = watchdog->nextTell() - Watchdog::Clock::now();
        ASSERT_FALSE(
            isReadable(watchdog->descriptor(), std::chrono::ceil<std::chrono::milliseconds>(wait)));
    }
    holder->sync();
    EXPECT_FALSE(holder->isBroken());
}

TEST_F(WatchdogTest, LetsGoOfButtonsThatWerePosted) {
    xcb_test_fake_input(judge->get(), XCB_BUTTON_PRESS, 1, 0, XCB_NONE, 0, 0, 0);
    xcb_test_fake_input(judge->get(), XCB_BUTTON_PRESS, 3, 0, XCB_NONE, 0, 0, 0);
    judge->sync();
    constexpr xcb_input_device_id_t pointer = 2;
    ASSERT_TRUE(eye.look(pointer)->isButtonDown);
    const auto watchdog = start();
    ASSERT_TRUE(watchdog);
    ASSERT_TRUE(watchdog->tell({1, 1U << 1 | 1U << 3}));
    EXPECT_TRUE(waitUntil([&] { return !eye.look(pointer)->isButtonDown; }));
}

TEST_F(WatchdogTest, LetsGoAlsoOfButtonsWhoseReleaseWasLost) {
    xcb_test_fake_input(judge->get(), XCB_BUTTON_PRESS, 1, 0, XCB_NONE, 0, 0, 0);
    judge->sync();
    const auto watchdog = start();
    ASSERT_TRUE(watchdog);
    ASSERT_TRUE(watchdog->tell({1, 1U << 1}));
    ASSERT_TRUE(watchdog->tell({1, 0})); // the release itself was still to be sent
    constexpr xcb_input_device_id_t pointer = 2;
    EXPECT_TRUE(waitUntil([&] { return !eye.look(pointer)->isButtonDown; }));
}

TEST_F(WatchdogTest, IsMissedWhenItIsNotThere) {
    EXPECT_FALSE(start("/nonexistent/quillon-watchdog"));
    EXPECT_FALSE(start("/bin/true")) << "ends without a word";
    server.kill();
    EXPECT_FALSE(start()) << "no server to give the input back";
}

TEST_F(WatchdogTest, ItsEndIsNoticed) {
    const auto watchdog = start();
    ASSERT_TRUE(watchdog);
    server.kill();
    EXPECT_TRUE(isReadable(watchdog->descriptor(), 10s));
    EXPECT_FALSE(watchdog->tell({1, 0}));
}

} // namespace
} // namespace quillon
