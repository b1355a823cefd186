#include "Platform/MainQueue.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace quillon {
namespace {

template <class Callable>
std::unique_ptr<Work> work(Callable callable) {
    return std::make_unique<WorkOf<Callable>>(std::move(callable));
}

TEST(MainQueue, RunsInOrder) {
    MainQueue queue;
    std::vector<int> ran;
    for (int i = 0; i < 3; ++i) {
        queue.push(work([&ran, i] { ran.push_back(i); }));
    }
    EXPECT_EQ(queue.runQueued(), 3U);
    EXPECT_EQ(ran, (std::vector{0, 1, 2}));
}

TEST(MainQueue, SaysWhenSomebodyMustBeWoken) {
    MainQueue queue;
    EXPECT_TRUE(queue.push(work([] {})));
    EXPECT_FALSE(queue.push(work([] {})));
    queue.runQueued();
    EXPECT_TRUE(queue.push(work([] {})));
}

TEST(MainQueue, WorkThatQueuesItselfRunsOncePerTurn) {
    MainQueue queue;
    int runs = 0;
    std::function<void()> again = [&] {
        ++runs;
        queue.push(work([&] { again(); }));
    };
    queue.push(work([&] { again(); }));
    queue.runQueued();
    EXPECT_EQ(runs, 1);
    queue.runQueued();
    EXPECT_EQ(runs, 2);
}

TEST(MainQueue, TakesALongQueueDownWithoutRecursion) {
    MainQueue queue;
    for (int i = 0; i < 1'000'000; ++i) {
        queue.push(work([] {}));
    }
}

TEST(MainQueue, LosesNothingBetweenThreads) {
    MainQueue queue;
    constexpr int each = 20'000;
    int ran = 0;
    const auto fill = [&] {
        for (int i = 0; i < each; ++i) {
            queue.push(work([&ran] { ++ran; }));
        }
    };
    std::thread first(fill);
    std::thread second(fill);
    while (ran < 2 * each) {
        queue.runQueued();
    }
    first.join();
    second.join();
    EXPECT_EQ(ran, 2 * each);
}

} // namespace
} // namespace quillon
