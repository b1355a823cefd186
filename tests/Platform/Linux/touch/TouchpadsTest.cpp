// What comes from touchpads that are there, come and go.

#include "TouchBench.h"

#include <array>

#include <sys/socket.h>

namespace quillon {
namespace {

struct TouchpadsTest : TouchBench {
    FakeEvdev pad{5};
    FakeEvdev other{5};
};

TEST_F(TouchpadsTest, FirstFrameComesAtOnce) {
    plug("pad", pad);
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    device.stop();
    start();
    expectFrames({3});
    device.stop();
    pad.hold({});
    start();
    expectFrames({0});
}

TEST_F(TouchpadsTest, OnlyWhatChangesTheNumberIsAFrame) {
    plug("pad", pad);
    start();
    expectFrames({0});
    pad.hold({0, 1});
    pad.hold({1, 2});
    pad.hold({1, 2, 3});
    pad.hold({});
    expectFrames({2, 3, 0});
}

TEST_F(TouchpadsTest, UnpluggedWhileTouched) {
    plug("pad", pad);
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    unplug("pad");
    expectFrames({0});
    other.hold({1, 4});
    plug("again", other);
    expectFrames({2});
}

TEST_F(TouchpadsTest, UnpluggedWithoutNewsOfIt) {
    plug("pad", pad);
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    pad.unplug();
    expectFrames({0});
}

TEST_F(TouchpadsTest, OneThatMayBeOpenedOnlyLater) {
    pad.hold({0, 1, 2});
    plug("pad", pad, false);
    start();
    expectFrames({0});
    plug("pad", pad, true);
    expectFrames({3});
}

TEST_F(TouchpadsTest, NewsOfOneThatIsOpenDoNotOpenItAgain) {
    plug("pad", pad);
    start();
    expectFrames({0});
    plug("pad", pad);
    pad.hold({0});
    expectFrames({1});
    pad.hold({});
    expectFrames({0});
    EXPECT_EQ(pad.timesOpened(), 1);
}

TEST_F(TouchpadsTest, TheOneTouchedLastCounts) {
    plug("pad", pad);
    plug("other", other);
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    other.hold({0});
    expectFrames({1});
    other.hold({});
    expectFrames({0});
    pad.hold({0, 1});
    expectFrames({2});
    unplug("other");
    pad.hold({0, 1, 2});
    expectFrames({3});
    unplug("pad");
    expectFrames({0});
}

TEST_F(TouchpadsTest, AnotherFingerOnOneTouchpadTakesTheTurnFromTheOther) {
    plug("pad", pad);
    plug("other", other);
    start();
    expectFrames({0});
    pad.hold({0, 1, 2});
    expectFrames({3});
    other.hold({0});
    expectFrames({1});
    pad.holdAndDrop({0, 1, 3}); // as many, but others
    expectFrames({3});
}

TEST_F(TouchpadsTest, WorkWithoutNews) {
    plug("pad", pad);
    news.reset();
    start();
    expectFrames({0});
    pad.hold({0, 1});
    expectFrames({2});
}

TEST_F(TouchpadsTest, NewsThatHangUpAreReadOnceAndNoMore) {
    plug("pad", pad);
    std::array<int, 2> ends{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    const FileDescriptor ours(ends[0]);
    close(ends[1]);
    newsDescriptor = ours.get();
    start();
    expectFrames({0});
    awaitNewsRead(1);
    for (int round = 0; round < 5; ++round) {
        pad.hold({0});
        expectFrames({1});
        pad.hold({});
        expectFrames({0});
    }
    device.stop();
    EXPECT_EQ(newsRead, 1);
}

} // namespace
} // namespace quillon
