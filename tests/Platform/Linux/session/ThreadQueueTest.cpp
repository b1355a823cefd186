#include "Platform/Linux/session/ThreadQueue.h"

#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <numeric>
#include <thread>
#include <vector>

namespace quillon {
namespace {

TEST(ThreadQueueTest, RunsInOrderOnAThreadOfItsOwn) {
    ThreadQueue queue("a label longer than a thread's name may be");
    std::vector<int> ran;
    std::thread::id thread;
    for (int i = 0; i < 1000; ++i) {
        queue.async([&ran, i] { ran.push_back(i); });
    }
    queue.sync([&] { thread = std::this_thread::get_id(); });
    std::vector<int> expected(1000);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(ran, expected);
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST(ThreadQueueTest, SyncSeesWhatOtherThreadsHaveQueuedBefore) {
    ThreadQueue queue("label");
    int value = 0;
    std::thread other([&] { queue.async([&] { value = 7; }); });
    other.join();
    int seen = 0;
    queue.sync([&] { seen = value; });
    EXPECT_EQ(seen, 7);
}

TEST(ThreadQueueTest, DestructionFinishesWhatRuns) {
    std::promise<void> running;
    std::promise<void> goOn;
    bool finished = false;
    std::thread helper;
    {
        ThreadQueue queue("label");
        queue.async([&] {
            running.set_value();
            goOn.get_future().wait();
            finished = true;
        });
        running.get_future().wait();
        helper = std::thread([&] { goOn.set_value(); });
    }
    EXPECT_TRUE(finished);
    helper.join();
}

TEST(ThreadQueueTest, DestructionDropsWhatHasNotBegun) {
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> alive = held;
    {
        ThreadQueue queue("label");
        for (int i = 0; i < 100; ++i) {
            queue.async([held] { (void)*held; });
        }
        held.reset();
    }
    EXPECT_TRUE(alive.expired());
}

} // namespace
} // namespace quillon
