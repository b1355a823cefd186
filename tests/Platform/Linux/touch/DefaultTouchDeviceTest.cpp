// Starting and stopping, from outside and from within a callback.

#include "TouchBench.h"

#include <future>

namespace quillon {
namespace {

using namespace std::chrono_literals;

struct DefaultTouchDeviceTest : TouchBench {
    FakeEvdev pad{5};
    FakeEvdev other{5};

    static bool isDone(const std::future<void>& future, std::chrono::milliseconds wait) {
        return future.wait_for(wait) == std::future_status::ready;
    }
};

TEST_F(DefaultTouchDeviceTest, IsOfUseWhenThereIsATouchpadToReadOrMayBeLater) {
    EXPECT_TRUE(device.isUsable());
    plug("pad", pad, false);
    EXPECT_FALSE(device.isUsable()) << "may not be read";
    plug("other", other);
    EXPECT_TRUE(device.isUsable());
    news.reset();
    EXPECT_TRUE(device.isUsable());
}

TEST_F(DefaultTouchDeviceTest, IsOfNoUseWhenNothingCanBeKnown) {
    news.reset();
    EXPECT_FALSE(device.isUsable());
    hasDirectory = false;
    EXPECT_FALSE(device.isUsable());
    start();
    device.stop();
    expectFrames({});
}

TEST_F(DefaultTouchDeviceTest, StartingAndStoppingTwiceChangesNothing) {
    plug("pad", pad);
    device.stop();
    start();
    start();
    expectFrames({0});
    pad.hold({1});
    expectFrames({1});
    EXPECT_EQ(pad.timesOpened(), 1);
    device.stop();
    device.stop();
}

TEST_F(DefaultTouchDeviceTest, WithoutCallbackThereAreNoFrames) {
    plug("pad", pad);
    start();
    expectFrames({0});
    device.removeCallback(nullptr);
    pad.hold({1});
    expectFrames({1});
    device.removeCallback(&noteFrame);
    pad.hold({1, 2});
    awaitNews(); // which are read after what touchpads have sent
    device.setCallback(&noteFrame);
    pad.hold({1});
    expectFrames({1});
}

TEST_F(DefaultTouchDeviceTest, StoppingWaitsForTheCallbackAndNoFrameFollows) {
    plug("pad", pad);
    std::promise<void> mayReturn;
    const auto permission = mayReturn.get_future().share();
    whenCalled = [&](int contacts) {
        if (contacts == 3) {
            permission.wait_for(limit);
        }
    };
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    pad.hold({}); // is not told any more
    const auto stopped = std::async(std::launch::async, [&] { device.stop(); });
    EXPECT_FALSE(isDone(stopped, 50ms));
    mayReturn.set_value();
    EXPECT_TRUE(isDone(stopped, limit));
    expectFrames({});
}

TEST_F(DefaultTouchDeviceTest, ACallbackMayStop) {
    plug("pad", pad);
    whenCalled = [&](int contacts) {
        if (contacts == 3) {
            device.stop();
        }
    };
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    pad.hold({0});
    device.stop();
    expectFrames({});
    start();
    expectFrames({1});
}

TEST_F(DefaultTouchDeviceTest, ACallbackMayStopAndStart) {
    plug("pad", pad);
    whenCalled = [&](int contacts) {
        if (contacts == 3) {
            device.stop();
            device.start();
        }
    };
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    pad.hold({0});
    expectFrames({1});
}

TEST_F(DefaultTouchDeviceTest, ACallbackThatStartsCannotPreventTheEnd) {
    plug("pad", pad);
    std::promise<void> mayReturn;
    const auto permission = mayReturn.get_future().share();
    whenCalled = [&](int contacts) {
        if (contacts == 3) {
            permission.wait_for(limit);
            device.start();
        }
    };
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    const auto stopped = std::async(std::launch::async, [&] { device.stop(); });
    EXPECT_FALSE(isDone(stopped, 50ms));
    mayReturn.set_value();
    EXPECT_TRUE(isDone(stopped, limit));
    pad.hold({});
    expectFrames({});
    whenCalled = nullptr;
    start();
    expectFrames({0});
}

TEST_F(DefaultTouchDeviceTest, WhenTouchpadsCannotBeFollowedAnyMoreNobodyTouches) {
    plug("pad", pad);
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    device.stop();
    hasDirectory = false;
    start();
    expectFrames({0});
}

} // namespace
} // namespace quillon
