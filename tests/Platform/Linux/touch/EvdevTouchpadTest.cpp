#include "Platform/Linux/touch/EvdevTouchpad.h"

#include "FakeEvdev.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>

namespace quillon {
namespace {

struct EvdevTouchpadTest : testing::Test {
    FakeEvdev pad{5};
    std::vector<int> seen;

    std::unique_ptr<EvdevTouchpad> open() { return EvdevTouchpad::make(pad.open()); }

    bool read(EvdevTouchpad& touchpad) {
        seen.clear();
        return touchpad.read([&] { seen.push_back(touchpad.contacts()); });
    }
};

TEST_F(EvdevTouchpadTest, TellsOfEachFrameThatIsNew) {
    const auto touchpad = open();
    ASSERT_TRUE(touchpad);
    EXPECT_EQ(touchpad->contacts(), 0);
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(seen, std::vector<int>{});
    pad.hold({0, 1, 2});
    pad.hold({0, 1, 2});
    pad.hold({1, 3});
    pad.hold({});
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(seen, (std::vector{3, 2, 0}));
}

TEST_F(EvdevTouchpadTest, FingersThatRestAreThereFromTheBeginning) {
    pad.hold({0, 2, 4});
    const auto touchpad = open();
    ASSERT_TRUE(touchpad);
    EXPECT_EQ(touchpad->contacts(), 3);
    pad.hold({2, 4});
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(seen, std::vector{2});
}

TEST_F(EvdevTouchpadTest, FramesThatComeWhileTheBeginningIsReadAreNotTakenInTwice) {
    pad.hold({0, 1});
    // The first names no slot, since it is of the one spoken of last; but then another one is.
    pad.onQuestion([&] {
        pad.hold({0});
        pad.move(0);
    });
    const auto touchpad = open();
    ASSERT_TRUE(touchpad);
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(touchpad->contacts(), 1);
    pad.hold({0, 1, 2});
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(seen, std::vector{3});
}

TEST_F(EvdevTouchpadTest, ReadsTheStateAnewWhenFramesWereLost) {
    const auto touchpad = open();
    ASSERT_TRUE(touchpad);
    pad.hold({0, 1, 2});
    ASSERT_TRUE(read(*touchpad));
    pad.holdAndDrop({1});
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(seen, std::vector{1}) << "and nothing that never was";
    pad.holdAndDrop({1});
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(seen, std::vector<int>{});
    pad.hold({});
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(seen, std::vector{0});
}

TEST_F(EvdevTouchpadTest, WhatIsReadAnewMayChangeMeanwhile) {
    const auto touchpad = open();
    ASSERT_TRUE(touchpad);
    pad.holdAndDrop({0, 1, 2});
    pad.onQuestion([&] {
        pad.hold({0, 1});
        pad.move(0);
        pad.hold({1});
    });
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(touchpad->contacts(), 1);
    pad.hold({1, 3});
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(seen, std::vector{2});
}

TEST_F(EvdevTouchpadTest, KeysAreReadAnewToo) {
    FakeEvdev old{0};
    old.hold({0, 1, 2});
    const auto touchpad = EvdevTouchpad::make(old.open());
    ASSERT_TRUE(touchpad);
    EXPECT_EQ(touchpad->contacts(), 3);
    old.holdAndDrop({0, 1, 2, 3});
    EXPECT_TRUE(read(*touchpad));
    EXPECT_EQ(seen, std::vector{4});
}

TEST_F(EvdevTouchpadTest, HangsUpWhenItIsUnplugged) {
    const auto touchpad = open();
    ASSERT_TRUE(touchpad);
    pad.unplug();
    pollfd source{touchpad->descriptor(), POLLIN, 0};
    EXPECT_EQ(poll(&source, 1, 0), 1);
    EXPECT_NE(source.revents & POLLHUP, 0);
}

TEST_F(EvdevTouchpadTest, OtherFilesAreNoTouchpads) {
    EXPECT_FALSE(EvdevTouchpad::make(FileDescriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC))));
}

} // namespace
} // namespace quillon
