#include "Conformance.h"

#include <atomic>
#include <mutex>
#include <numeric>

namespace quillon {
namespace {

class RunLoopConformance : public Conformance {
  protected:
    [[nodiscard]] RunLoop& loop() const { return platform().runLoop; }
};

TEST_F(RunLoopConformance, TheMainQueueKeepsItsOrder) {
    std::vector<int> ran;
    loop().async([&] {
        ran.push_back(1);
        loop().async([&] { ran.push_back(4); });
    });
    loop().async([&] { ran.push_back(2); });
    loop().async([&] { ran.push_back(3); });
    EXPECT_TRUE(ran.empty()) << "not within the call";
    ASSERT_TRUE(until([&] { return ran.size() == 4; }));
    EXPECT_EQ(ran, (std::vector{1, 2, 3, 4}));
}

TEST_F(RunLoopConformance, BackgroundWorkRunsAndComesBackInOrder) {
    constexpr int pieces = 20;
    std::mutex mutex;
    std::vector<int> ran;
    std::vector<int> came;
    for (int piece = 0; piece < pieces; ++piece) {
        loop().asyncBackground([&, piece] {
            const std::scoped_lock lock(mutex);
            ran.push_back(piece);
            loop().async([&, piece] { came.push_back(piece); });
        });
    }
    ASSERT_TRUE(until([&] { return came.size() == pieces; }));
    const std::scoped_lock lock(mutex);
    EXPECT_EQ(came, ran) << "main work that was queued in this order";
    std::sort(ran.begin(), ran.end());
    std::vector<int> all(pieces);
    std::iota(all.begin(), all.end(), 0);
    EXPECT_EQ(ran, all) << "each once";
}

TEST_F(RunLoopConformance, WorkAfterAWhileIsNeverEarly) {
    // Also of a length that is no whole number of milliseconds, and of a second and more, where
    // systems allow their timers some slack.
    std::vector<double> seconds{0, 0.0104, 0.05, 0.0999, 1.0, 1.013, 1.026, 1.039, 1.1};
    std::size_t ran = 0;
    for (const double wait : seconds) {
        const double start = loop().uptime();
        loop().asyncAfter(wait, [&, wait, start] {
            ++ran;
            // What two readings of a clock of doubles lose.
            EXPECT_GE(loop().uptime() - start, wait - 1e-6) << wait;
        });
    }
    EXPECT_EQ(ran, 0U) << "not within the call";
    ASSERT_TRUE(until([&] { return ran == seconds.size(); }));
}

TEST_F(RunLoopConformance, TimersFireInTheOrderOfTheirTimes) {
    std::vector<int> ran;
    loop().asyncAfter(0.2, [&] { ran.push_back(3); });
    loop().asyncAfter(0.1, [&] { ran.push_back(2); });
    loop().asyncAfter(0.01, [&] { ran.push_back(1); });
    ASSERT_TRUE(until([&] { return ran.size() == 3; }));
    EXPECT_EQ(ran, (std::vector{1, 2, 3}));
}

TEST_F(RunLoopConformance, ACancelledTimerDoesNotFireAndAReleasedOneDoes) {
    bool cancelledRan = false;
    bool releasedRan = false;
    bool laterRan = false;
    const TimerRef cancelled = loop().asyncAfter(0.01, [&] { cancelledRan = true; });
    loop().asyncAfter(0.02, [&] { releasedRan = true; }).reset();
    loop().asyncAfter(0.1, [&] { laterRan = true; });
    cancelled->cancel();
    cancelled->cancel(); // no harm
    ASSERT_TRUE(until([&] { return laterRan; }));
    EXPECT_FALSE(cancelledRan);
    EXPECT_TRUE(releasedRan);
}

TEST_F(RunLoopConformance, ATimerMayBeCancelledWithinItsOwnCallback) {
    int once = 0;
    int repeated = 0;
    bool later = false;
    TimerRef one;
    TimerRef many;
    one = loop().asyncAfter(0.01, [&] {
        ++once;
        one->cancel();
    });
    many = loop().scheduleRepeating(0.01, [&] {
        if (++repeated == 3) {
            many->cancel();
            loop().asyncAfter(0.1, [&] { later = true; });
        }
    });
    ASSERT_TRUE(until([&] { return later; }));
    EXPECT_EQ(once, 1);
    EXPECT_EQ(repeated, 3);
}

TEST_F(RunLoopConformance, ATimerMayBeReleasedAndCancelledWithinItsOwnCallback) {
    // What it captures must live until the callback returns.
    auto kept = std::make_shared<int>(0);
    TimerRef timer;
    timer = loop().scheduleRepeating(0.01, [&timer, kept] {
        timer->cancel();
        timer.reset();
        ++*kept;
    });
    bool later = false;
    loop().asyncAfter(0.1, [&] { later = true; });
    ASSERT_TRUE(until([&] { return later; }));
    EXPECT_EQ(*kept, 1);
}

TEST_F(RunLoopConformance, ARepeatingTimerBeginsAfterOneIntervalAndGoesOn) {
    constexpr double interval = 0.05;
    std::vector<double> fired;
    const double start = loop().uptime();
    const TimerRef timer =
        loop().scheduleRepeating(interval, [&] { fired.push_back(loop().uptime() - start); });
    EXPECT_TRUE(fired.empty());
    ASSERT_TRUE(until([&] { return fired.size() >= 4; }));
    timer->cancel();
    // Systems may pull a repetition forward a little, when the one before was late.
    EXPECT_GE(fired[0], interval * 0.95);
    EXPECT_GE(fired[3], interval * 4 * 0.95);
    const auto count = fired.size();
    bool later = false;
    loop().asyncAfter(3 * interval, [&] { later = true; });
    ASSERT_TRUE(until([&] { return later; }));
    EXPECT_EQ(fired.size(), count) << "cancelled";
}

TEST_F(RunLoopConformance, ASerialQueueKeepsItsOrderAndSyncWaitsForIt) {
    const auto queue = loop().makeSerialQueue("conformance");
    std::vector<int> ran;
    for (int piece = 1; piece <= 5; ++piece) {
        queue->async([&, piece] { ran.push_back(piece); });
    }
    queue->sync([&] { ran.push_back(6); });
    EXPECT_EQ(ran, (std::vector{1, 2, 3, 4, 5, 6}));
    queue->async([&] { ran.push_back(7); });
    queue->sync([] {});
    EXPECT_EQ(ran.back(), 7);
}

TEST_F(RunLoopConformance, ASerialQueueRunsWithoutBeingWaitedFor) {
    const auto queue = loop().makeSerialQueue("conformance");
    std::atomic<bool> ran = false;
    bool cameBack = false;
    queue->async([&] {
        ran = true;
        loop().async([&] { cameBack = true; });
    });
    ASSERT_TRUE(until([&] { return cameBack; }));
    EXPECT_TRUE(ran);
}

TEST_F(RunLoopConformance, UptimeNeverGoesBack) {
    double latest = loop().uptime();
    const double first = latest;
    int readings = 0;
    const TimerRef timer = loop().scheduleRepeating(0.002, [&] {
        const double now = loop().uptime();
        EXPECT_GE(now, latest);
        latest = now;
        ++readings;
    });
    ASSERT_TRUE(until([&] { return readings == 50; }));
    timer->cancel();
    EXPECT_GT(latest, first);
}

} // namespace
} // namespace quillon
