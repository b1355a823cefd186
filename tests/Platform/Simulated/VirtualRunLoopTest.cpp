#include "Platform/Simulated/VirtualRunLoop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillon {
namespace {

struct VirtualRunLoopTest : testing::Test {
    VirtualRunLoop loop;
    std::vector<std::string> ran;
    auto note(std::string what) {
        return [this, what = std::move(what)] { ran.push_back(what); };
    }
};

TEST_F(VirtualRunLoopTest, NothingHappensUntilTheClockMoves) {
    loop.asyncAfter(0.085, note("later"));
    loop.async(note("queued"));
    EXPECT_TRUE(ran.empty());
    loop.drain();
    EXPECT_EQ(ran, (std::vector<std::string>{"queued"}));
    loop.advanceTo(84'999);
    EXPECT_EQ(ran.size(), 1U);
    loop.advanceTo(85'000);
    EXPECT_EQ(ran.size(), 2U);
    EXPECT_EQ(loop.uptime(), 0.085);
}

TEST_F(VirtualRunLoopTest, IntervalsAddUpExactly) {
    int ticks = 0;
    loop.scheduleRepeating(0.1, [&] { ++ticks; });
    loop.advanceTo(999'999);
    EXPECT_EQ(ticks, 9);
    loop.advanceTo(1'000'000);
    EXPECT_EQ(ticks, 10);
}

TEST_F(VirtualRunLoopTest, OldestTimerFirstAtOneMoment) {
    loop.scheduleRepeating(0.5, note("a"));
    loop.asyncAfter(1.0, note("b"));
    loop.scheduleRepeating(1.0, note("c"));
    loop.advanceTo(1'000'000);
    EXPECT_EQ(ran, (std::vector<std::string>{"a", "a", "b", "c"}));
}

TEST_F(VirtualRunLoopTest, QueuesAreDrainedAfterEachTimerMainFirst) {
    loop.asyncAfter(1, [this] {
        loop.asyncBackground(note("background"));
        loop.async(note("main"));
    });
    loop.asyncAfter(1, note("second timer"));
    loop.advance(1);
    EXPECT_EQ(ran, (std::vector<std::string>{"main", "background", "second timer"}));
}

TEST_F(VirtualRunLoopTest, BackgroundWorkMayQueueMainWork) {
    loop.asyncBackground([this] { loop.async(note("main")); });
    loop.drain();
    EXPECT_EQ(ran, (std::vector<std::string>{"main"}));
}

TEST_F(VirtualRunLoopTest, CancelledTimerNeverFires) {
    const TimerRef timer = loop.scheduleRepeating(1, note("tick"));
    loop.advance(2);
    timer->cancel();
    loop.advance(5);
    EXPECT_EQ(ran.size(), 2U);
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(VirtualRunLoopTest, TimerMayCancelItself) {
    TimerRef timer;
    int ticks = 0;
    timer = loop.scheduleRepeating(1, [&] {
        ++ticks;
        timer->cancel();
    });
    loop.advance(5);
    EXPECT_EQ(ticks, 1);
}

TEST_F(VirtualRunLoopTest, ReleasingTheHandleDoesNotStopTheTimer) {
    loop.scheduleRepeating(1, note("tick"));
    loop.advance(2);
    EXPECT_EQ(ran.size(), 2U);
}

TEST_F(VirtualRunLoopTest, ClockNeverGoesBack) {
    loop.advanceTo(500);
    loop.advanceTo(100);
    EXPECT_EQ(loop.time(), 500);
}

} // namespace
} // namespace quillon
