#include "Platform/MacOS/MacRunLoop.h"

#include "fakes/FakeDispatch.h"
#include "fakes/FakeTimers.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace quillon {
namespace {

using fakes::fakeDispatch;
using fakes::fakeTimers;

class RunLoopTest : public testing::Test {
  protected:
    RunLoopTest() {
        fakeDispatch().reset();
        fakeTimers().reset();
    }

    MacRunLoop runLoop;
    std::vector<std::string> ran;
};

TEST_F(RunLoopTest, QueuesWorkOnTheMainQueue) {
    runLoop.async([&] { ran.push_back("first"); });
    runLoop.async([&] { ran.push_back("second"); });
    EXPECT_EQ(ran.size(), 0U) << "not before control returns to the run loop";
    EXPECT_EQ(fakeDispatch().main.run(), 2);
    EXPECT_EQ(ran, (std::vector<std::string>{"first", "second"}));
    EXPECT_EQ(fakeDispatch().globalRequests.size(), 0U);
}

TEST_F(RunLoopTest, QueuesBackgroundWorkOnTheGlobalQueueOfUserInitiatedQuality) {
    runLoop.asyncBackground([&] { ran.push_back("background"); });
    EXPECT_EQ(fakeDispatch().main.waiting.size(), 0U);
    ASSERT_EQ(fakeDispatch().globalRequests.size(), 1U);
    EXPECT_EQ(fakeDispatch().globalRequests[0].identifier, 0x19);
    EXPECT_EQ(fakeDispatch().globalRequests[0].flags, 0U);
    EXPECT_EQ(fakeDispatch().global.run(), 1);
    EXPECT_EQ(ran, std::vector<std::string>{"background"});
}

TEST_F(RunLoopTest, WorkIsDestroyedOnceItHasRun) {
    const auto held = std::make_shared<int>(0);
    runLoop.async([held] {});
    runLoop.asyncBackground([held] {});
    EXPECT_EQ(held.use_count(), 3);
    fakeDispatch().main.run();
    fakeDispatch().global.run();
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(RunLoopTest, RunsLaterWorkOnTheMainQueueAfterSoManyNanoseconds) {
    const TimerRef timer = runLoop.asyncAfter(0.35, [&] { ran.push_back("later"); });
    ASSERT_EQ(fakeDispatch().afters.size(), 1U);
    EXPECT_EQ(fakeDispatch().afters[0].when, 350'000'000U);
    EXPECT_EQ(fakeDispatch().afters[0].queue, &fakeDispatch().main);
    fakeDispatch().runAfters();
    EXPECT_EQ(ran, std::vector<std::string>{"later"});
}

TEST_F(RunLoopTest, TimesThatMakeNoSenseAreBounded) {
    const auto earlier = runLoop.asyncAfter(-1, [] {});
    const auto never = runLoop.asyncAfter(std::numeric_limits<double>::infinity(), [] {});
    EXPECT_EQ(fakeDispatch().afters.at(0).when, 0U);
    EXPECT_EQ(fakeDispatch().afters.at(1).when, 1'000'000'000'000'000'000U);
    fakeDispatch().runAfters();
}

TEST_F(RunLoopTest, LaterWorkRunsWithoutItsHandleButNotWhenCancelled) {
    const auto held = std::make_shared<int>(0);
    [[maybe_unused]] const auto released = runLoop.asyncAfter(1, [&] { ran.push_back("kept"); });
    const TimerRef cancelled = runLoop.asyncAfter(1, [&, held] { ran.push_back("cancelled"); });
    runLoop.asyncAfter(1, [&] { ran.push_back("no handle"); });
    cancelled->cancel();
    EXPECT_EQ(held.use_count(), 1) << "what it held goes at once";
    fakeDispatch().runAfters();
    EXPECT_EQ(ran, (std::vector<std::string>{"kept", "no handle"}));
}

TEST_F(RunLoopTest, WhatLaterWorkHoldsGoesOnceItHasRun) {
    const auto held = std::make_shared<int>(0);
    const TimerRef timer = runLoop.asyncAfter(1, [held] {});
    fakeDispatch().runAfters();
    EXPECT_EQ(held.use_count(), 1) << "although the handle is still there";
}

TEST_F(RunLoopTest, LaterWorkMayCancelItself) {
    TimerRef timer;
    const auto held = std::make_shared<int>(0);
    timer = runLoop.asyncAfter(1, [&, held] {
        timer->cancel();
        ran.push_back(held.use_count() > 1 ? "held" : "gone");
    });
    fakeDispatch().runAfters();
    EXPECT_EQ(ran, std::vector<std::string>{"held"});
    timer->cancel();
}

TEST_F(RunLoopTest, RepeatsByATimerOfTheDefaultMode) {
    const TimerRef timer = runLoop.scheduleRepeating(2.0, [&] { ran.push_back("tick"); });
    ASSERT_EQ(fakeTimers().schedules.size(), 1U);
    EXPECT_EQ(fakeTimers().schedules[0].interval, 2.0);
    EXPECT_TRUE(fakeTimers().schedules[0].repeats);
    EXPECT_EQ(fakeTimers().schedules[0].mode, "kCFRunLoopDefaultMode");
    fakeTimers().fire();
    fakeTimers().fire();
    EXPECT_EQ(ran.size(), 2U);
    timer->cancel();
    EXPECT_EQ(fakeTimers().validCount(), 0);
    fakeTimers().fire();
    EXPECT_EQ(ran.size(), 2U);
}

TEST_F(RunLoopTest, ATimerRunsWithoutItsHandleAndMayCancelItself) {
    TimerRef timer = runLoop.scheduleRepeating(5.0, [&] { ran.push_back("tick"); });
    timer.reset();
    fakeTimers().fire();
    EXPECT_EQ(ran.size(), 1U);
    const auto held = std::make_shared<int>(0);
    timer = runLoop.scheduleRepeating(5.0, [&, held] {
        timer->cancel();
        ran.push_back(held.use_count() > 1 ? "held" : "gone");
    });
    fakeTimers().fire();
    EXPECT_EQ(ran.back(), "held");
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(fakeTimers().validCount(), 1);
}

TEST_F(RunLoopTest, UptimeIsTheSystems) {
    fakeTimers().uptime = 1234.5;
    EXPECT_EQ(runLoop.uptime(), 1234.5);
}

TEST_F(RunLoopTest, ASerialQueueHasItsLabelAndKeepsTheOrder) {
    const auto queue = runLoop.makeSerialQueue("threefinger.touch.state");
    ASSERT_EQ(fakeDispatch().made.size(), 1U);
    EXPECT_EQ(fakeDispatch().made[0]->label, "threefinger.touch.state");
    EXPECT_TRUE(fakeDispatch().made[0]->isSerial);
    queue->async([&] { ran.push_back("first"); });
    queue->async([&] { ran.push_back("second"); });
    EXPECT_EQ(ran.size(), 0U);
    queue->sync([&] { ran.push_back("third"); });
    EXPECT_EQ(ran, (std::vector<std::string>{"first", "second", "third"}));
}

TEST_F(RunLoopTest, ASerialQueueThatGoesDropsWhatHasNotBegun) {
    auto queue = runLoop.makeSerialQueue("label");
    const auto held = std::make_shared<int>(0);
    queue->async([&, held] { ran.push_back("dropped"); });
    queue.reset();
    EXPECT_EQ(ran.size(), 0U);
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_TRUE(fakeDispatch().made[0]->isReleased);
    EXPECT_EQ(fakeDispatch().made[0]->waiting.size(), 0U) << "nothing calls the queue any more";
}

} // namespace
} // namespace quillon
