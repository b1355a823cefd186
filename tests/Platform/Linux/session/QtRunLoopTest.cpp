#include "Platform/Linux/session/QtRunLoop.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <csignal>
#include <numeric>
#include <thread>
#include <vector>

#include <unistd.h>

namespace quillon {
namespace {

struct QtRunLoopTest : testing::Test {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    QtRunLoop loop;

    /// Runs until `quit(0)`, or fails after a limit that no passing test reaches.
    int run() {
        constexpr double limit = 20;
        const TimerRef guard = loop.asyncAfter(limit, [this] { loop.quit(99); });
        const int status = loop.run();
        guard->cancel();
        return status;
    }
};

TEST_F(QtRunLoopTest, RunsQueuedWorkInOrderOnTheMainThread) {
    std::vector<int> ran;
    const auto mainThread = std::this_thread::get_id();
    loop.async([&] { ran.push_back(1); });
    loop.async([&] {
        ran.push_back(2);
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
        loop.quit(0);
    });
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(ran, (std::vector{1, 2}));
}

TEST_F(QtRunLoopTest, BackgroundWorkRunsElsewhereAndComesBack) {
    const auto mainThread = std::this_thread::get_id();
    std::thread::id background = mainThread;
    loop.asyncBackground([&] {
        background = std::this_thread::get_id();
        loop.async([&] { loop.quit(0); });
    });
    EXPECT_EQ(run(), 0);
    EXPECT_NE(background, mainThread);
}

TEST_F(QtRunLoopTest, BackgroundWorkKeepsItsOrder) {
    constexpr int pieces = 200;
    std::vector<int> ran;
    for (int piece = 0; piece < pieces; ++piece) {
        loop.asyncBackground([&, piece] {
            if (piece % 2 == 0) {
                std::this_thread::yield(); // others would overtake
            }
            ran.push_back(piece);
            if (piece == pieces - 1) {
                loop.async([&] { loop.quit(0); });
            }
        });
    }
    EXPECT_EQ(run(), 0);
    std::vector<int> inOrder(pieces);
    std::iota(inOrder.begin(), inOrder.end(), 0);
    EXPECT_EQ(ran, inOrder);
}

TEST_F(QtRunLoopTest, WorkFromAnotherThreadWakesTheLoop) {
    std::thread other([this] { loop.async([this] { loop.quit(7); }); });
    EXPECT_EQ(run(), 7);
    other.join();
}

TEST_F(QtRunLoopTest, TimersFireInTheirTime) {
    const double start = loop.uptime();
    double fired = 0;
    loop.asyncAfter(0.05, [&] {
        fired = loop.uptime();
        loop.quit(0);
    });
    EXPECT_EQ(run(), 0);
    EXPECT_GE(fired - start, 0.049);
}

TEST_F(QtRunLoopTest, RepeatingTimerTicksUntilCancelledFromWithin) {
    int ticks = 0;
    TimerRef timer;
    timer = loop.scheduleRepeating(0.001, [&] {
        if (++ticks == 3) {
            timer->cancel();
            loop.asyncAfter(0.02, [&] { loop.quit(0); });
        }
    });
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(ticks, 3);
}

TEST_F(QtRunLoopTest, CancelledTimerNeverFires) {
    bool fired = false;
    loop.asyncAfter(0.001, [&] { fired = true; })->cancel();
    loop.asyncAfter(0.02, [&] { loop.quit(0); });
    EXPECT_EQ(run(), 0);
    EXPECT_FALSE(fired);
}

TEST_F(QtRunLoopTest, StaleHandleDoesNotCancelAnotherTimer) {
    // Qt gives a timer's id to the next one.
    const TimerRef first = loop.asyncAfter(1000, [] {});
    first->cancel();
    loop.asyncAfter(0.001, [&] { loop.quit(0); });
    first->cancel();
    EXPECT_EQ(run(), 0);
}

TEST_F(QtRunLoopTest, HandleOfATimerThatHasFiredIsHarmless) {
    const TimerRef fired = loop.asyncAfter(0.001, [this, &fired] {
        loop.asyncAfter(0.001, [this] { loop.quit(0); });
        fired->cancel();
    });
    EXPECT_EQ(run(), 0);
}

TEST_F(QtRunLoopTest, TerminationSignalsEndItCleanly) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        loop.async([signal] { kill(getpid(), signal); });
        EXPECT_EQ(run(), 0);
    }
}

} // namespace
} // namespace quillon
