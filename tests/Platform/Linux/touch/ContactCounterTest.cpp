#include "Platform/Linux/touch/ContactCounter.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>

#include <linux/input.h>

namespace quillon {
namespace {

struct Code {
    std::string_view name;
    unsigned int type, code;
};

constexpr Code codes[]{
    {"slot", EV_ABS, ABS_MT_SLOT},         {"id", EV_ABS, ABS_MT_TRACKING_ID},
    {"tool", EV_ABS, ABS_MT_TOOL_TYPE},    {"distance", EV_ABS, ABS_MT_DISTANCE},
    {"x", EV_ABS, ABS_MT_POSITION_X},      {"touch", EV_KEY, BTN_TOUCH},
    {"one", EV_KEY, BTN_TOOL_FINGER},      {"two", EV_KEY, BTN_TOOL_DOUBLETAP},
    {"three", EV_KEY, BTN_TOOL_TRIPLETAP}, {"four", EV_KEY, BTN_TOOL_QUADTAP},
    {"five", EV_KEY, BTN_TOOL_QUINTTAP},   {"left", EV_KEY, BTN_LEFT},
};

ContactState untouched(int slots, bool hasTouchKey = true) {
    return {.slots = std::vector<ContactSlot>(static_cast<std::size_t>(slots)),
            .hasTouchKey = hasTouchKey};
}

/// Frames as touchpads send them: "slot 1 id 7 x 20", with only what is new.
struct Pad {
    ContactCounter counter;

    /// What is known after it: "3", or "3 same" when it is said to be nothing new.
    std::string frame(std::string_view events) {
        std::size_t at = 0;
        const auto word = [&] {
            const std::size_t begin = std::min(events.find_first_not_of(' ', at), events.size());
            at = std::min(events.find(' ', begin), events.size());
            return std::string(events.substr(begin, at - begin));
        };
        for (std::string name = word(); !name.empty(); name = word()) {
            const auto* found = std::find_if(std::begin(codes), std::end(codes),
                                             [&](const Code& code) { return code.name == name; });
            EXPECT_NE(found, std::end(codes)) << name;
            EXPECT_FALSE(counter.handle(found->type, found->code, std::stoi(word())));
        }
        const bool isNews = counter.handle(EV_SYN, SYN_REPORT, 0);
        return std::to_string(counter.contacts()) + (isNews ? "" : " same");
    }
};

TEST(ContactCounterTest, CountsFingersAsTheyComeAndGoInAnyOrder) {
    Pad pad{ContactCounter(untouched(5))};
    EXPECT_EQ(pad.counter.contacts(), 0);
    EXPECT_EQ(pad.frame("id 10 x 5 touch 1 one 1"), "1");
    EXPECT_EQ(pad.frame("slot 1 id 11 x 9 one 0 two 1"), "2");
    EXPECT_EQ(pad.frame("slot 2 id 12 x 9 two 0 three 1"), "3");
    EXPECT_EQ(pad.frame("slot 3 id 13 x 9 three 0 four 1"), "4");
    EXPECT_EQ(pad.frame("slot 1 id -1 four 0 three 1"), "3");
    EXPECT_EQ(pad.frame("slot 3 id -1 three 0 two 1"), "2");
    EXPECT_EQ(pad.frame("slot 1 id 14 two 0 three 1"), "3");
    EXPECT_EQ(pad.frame("slot 0 id -1 slot 2 id -1 three 0 one 1"), "1");
    EXPECT_EQ(pad.frame("slot 1 id -1 touch 0 one 0"), "0");
}

TEST(ContactCounterTest, CountsThoseThatComeAndGoTogether) {
    Pad pad{ContactCounter(untouched(5))};
    EXPECT_EQ(pad.frame("slot 0 id 1 slot 1 id 2 slot 2 id 3 touch 1 three 1"), "3");
    EXPECT_EQ(pad.frame("slot 0 id -1 slot 1 id -1 slot 2 id -1 touch 0 three 0"), "0");
}

TEST(ContactCounterTest, MotionAndClicksAreNothingNew) {
    Pad pad{ContactCounter(untouched(5))};
    pad.frame("id 1 slot 1 id 2 touch 1 two 1");
    EXPECT_EQ(pad.frame("slot 0 x 6 slot 1 x 7"), "2 same");
    EXPECT_EQ(pad.frame("left 1"), "2 same");
    EXPECT_EQ(pad.frame(""), "2 same");
}

TEST(ContactCounterTest, AnotherFingerInTheSameSlotIsAnotherContact) {
    Pad pad{ContactCounter(untouched(5))};
    pad.frame("id 1 slot 1 id 2 touch 1 two 1");
    EXPECT_EQ(pad.frame("slot 1 id 3"), "2");
    EXPECT_EQ(pad.frame("slot 0 id -1 id 4"), "2");
    EXPECT_EQ(pad.frame("slot 1 id -1 two 0 one 1"), "1");
}

TEST(ContactCounterTest, NothingCountsBeforeItsFrameEnds) {
    ContactCounter counter(untouched(5));
    counter.handle(EV_ABS, ABS_MT_TRACKING_ID, 1);
    EXPECT_EQ(counter.contacts(), 0);
    EXPECT_TRUE(counter.handle(EV_SYN, SYN_REPORT, 0));
    EXPECT_EQ(counter.contacts(), 1);
}

TEST(ContactCounterTest, PalmsAreNoFingers) {
    Pad pad{ContactCounter(untouched(5))};
    EXPECT_EQ(pad.frame("id 1 tool 2 touch 1 one 1"), "0 same") << "even if it is all there is";
    EXPECT_EQ(pad.frame("slot 1 id 2 one 0 two 1"), "1");
    EXPECT_EQ(pad.frame("slot 0 tool 0"), "2") << "it turned out to be a finger";
    EXPECT_EQ(pad.frame("slot 1 tool 2"), "1");
    EXPECT_EQ(pad.frame("slot 1 id -1 two 0 one 1"), "1 same");
    EXPECT_EQ(pad.frame("slot 1 id 3 one 0 two 1"), "1 same") << "the slot is still a palm's";
}

TEST(ContactCounterTest, FingersThatHoverAreNotDown) {
    Pad pad{ContactCounter(untouched(5))};
    EXPECT_EQ(pad.frame("id 1 distance 4 one 1"), "0 same");
    EXPECT_EQ(pad.frame("distance 0 touch 1"), "1");
    EXPECT_EQ(pad.frame("distance 1 touch 0"), "0");
    EXPECT_EQ(pad.frame("id -1 one 0"), "0 same");
}

TEST(ContactCounterTest, TwoSlotsAndMoreFingers) {
    Pad pad{ContactCounter(untouched(2))};
    EXPECT_EQ(pad.frame("id 1 touch 1 one 1"), "1");
    EXPECT_EQ(pad.frame("slot 1 id 2 one 0 two 1"), "2");
    EXPECT_EQ(pad.frame("two 0 three 1"), "3");
    EXPECT_EQ(pad.frame("three 0 four 1"), "4");
    EXPECT_EQ(pad.frame("four 0 five 1"), "5");
    EXPECT_EQ(pad.frame("five 0 three 1 slot 0 x 7"), "3");
    EXPECT_EQ(pad.frame("three 0 two 1"), "2");
    EXPECT_EQ(pad.frame("slot 0 id -1 slot 1 id -1 touch 0 two 0"), "0");
}

TEST(ContactCounterTest, TwoSlotsThatFollowNobodyWhenThereAreThree) {
    Pad pad{ContactCounter(untouched(2))};
    pad.frame("id 1 slot 1 id 2 touch 1 two 1");
    EXPECT_EQ(pad.frame("slot 1 id -1 two 0 three 1"), "3");
    EXPECT_EQ(pad.frame("slot 1 id 3 slot 0 id 4 three 0 two 1"), "2");
}

TEST(ContactCounterTest, APalmIsAmongThoseThatAreMoreThanTheSlots) {
    Pad pad{ContactCounter(untouched(2))};
    EXPECT_EQ(pad.frame("id 1 tool 2 slot 1 id 2 touch 1 three 1"), "2");
}

TEST(ContactCounterTest, KeysDoNotCountPalmsAgainWhereEachHasASlot) {
    Pad pad{ContactCounter(untouched(5))};
    EXPECT_EQ(pad.frame("id 1 slot 1 id 2 slot 2 id 3 tool 2 touch 1 three 1"), "2");
}

TEST(ContactCounterTest, WithoutSlotsKeysAreAllThereIs) {
    Pad pad{ContactCounter(untouched(0))};
    EXPECT_EQ(pad.frame("one 1"), "0 same") << "it comes near";
    EXPECT_EQ(pad.frame("touch 1"), "1");
    EXPECT_EQ(pad.frame("one 0 two 1"), "2");
    EXPECT_EQ(pad.frame("two 0 three 1"), "3");
    EXPECT_EQ(pad.frame("three 0 four 1"), "4");
    EXPECT_EQ(pad.frame("four 0 three 1"), "3");
    EXPECT_EQ(pad.frame("three 0 touch 0"), "0");
}

TEST(ContactCounterTest, WithoutSlotsAndTouchKey) {
    Pad pad{ContactCounter(untouched(0, false))};
    EXPECT_EQ(pad.frame("three 1"), "3");
    EXPECT_EQ(pad.frame("three 0"), "0");
}

TEST(ContactCounterTest, FingersThatRestAtTheBeginningCount) {
    auto state = untouched(5);
    state.slots[1].trackingId = 4;
    state.slots[3].trackingId = 5;
    state.slot = 3;
    Pad pad{ContactCounter(state)};
    EXPECT_EQ(pad.counter.contacts(), 2);
    EXPECT_EQ(pad.frame("id -1"), "1") << "the slot that was spoken of last";
}

TEST(ContactCounterTest, WhatWasLostIsForgotten) {
    Pad pad{ContactCounter(untouched(5))};
    pad.frame("id 1 slot 1 id 2 slot 2 id 3 touch 1 three 1");
    pad.counter.handle(EV_ABS, ABS_MT_TRACKING_ID, -1); // of a frame whose rest is lost
    auto state = untouched(5);
    state.slots[4].trackingId = 9;
    EXPECT_TRUE(pad.counter.reset(state));
    EXPECT_EQ(pad.counter.contacts(), 1);
    EXPECT_EQ(pad.frame("x 7"), "1 same");
    EXPECT_FALSE(pad.counter.reset(pad.counter.state()));
    EXPECT_TRUE(pad.counter.reset(untouched(5)));
    EXPECT_EQ(pad.counter.contacts(), 0);
}

TEST(ContactCounterTest, SlotsThatAreNotThereAreIgnored) {
    Pad pad{ContactCounter(untouched(2))};
    EXPECT_EQ(pad.frame("slot 2 id 1"), "0 same");
    EXPECT_EQ(pad.frame("slot -1 id 1"), "0 same");
    EXPECT_EQ(pad.frame("slot 1 id 1"), "1");
}

} // namespace
} // namespace quillon
