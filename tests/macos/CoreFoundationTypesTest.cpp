#include "Platform/MacOS/CoreFoundationTypes.h"

#include "ServicesTest.h"

#include <array>
#include <string>

namespace quillon {
namespace {

using CoreFoundationTypesTest = ServicesTest;

long living() { return fakes::FakeCoreFoundation::livingObjects(); }

CfOwned<CFNumberRef> number(double value) {
    return CfOwned(CFNumberCreate(kCFAllocatorDefault, kCFNumberDoubleType, &value));
}

CfOwned<CFNumberRef> number(std::int64_t value) {
    return CfOwned(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &value));
}

TEST_F(CoreFoundationTypesTest, OwnedIsReleasedOnceWhereverItIsMoved) {
    const long before = living();
    {
        auto text = cfText("a");
        EXPECT_EQ(living(), before + 1);
        const CfOwned moved(std::move(text));
        EXPECT_EQ(living(), before + 1);
        auto other = cfText("b");
        other = cfText("c");
        EXPECT_EQ(living(), before + 2);
        other = {};
        EXPECT_FALSE(other);
        EXPECT_EQ(living(), before + 1);
    }
    EXPECT_EQ(living(), before);
}

TEST_F(CoreFoundationTypesTest, RetainingKeepsAliveWhatTheOwnerLetsGo) {
    const long before = living();
    auto owner = cfText("a");
    auto kept = CfOwned<CFStringRef>::retaining(owner.get());
    owner = {};
    EXPECT_EQ(living(), before + 1);
    EXPECT_EQ(textOf(kept.get()), "a");
    kept = {};
    EXPECT_EQ(living(), before);
    EXPECT_FALSE(CfOwned<CFStringRef>::retaining(nullptr));
}

TEST_F(CoreFoundationTypesTest, TextGoesThereAndBack) {
    for (const std::string& text :
         {std::string(), std::string("Xcode"), std::string("Räder"), std::string("日本"),
          std::string("🎵 a"), std::string("a\0b", 3)}) {
        const auto there = cfText(text);
        ASSERT_TRUE(there) << text;
        EXPECT_EQ(textOf(there.get()), text);
    }
}

TEST_F(CoreFoundationTypesTest, WhatIsNoTextIsNull) {
    EXPECT_FALSE(cfText("\xff"));
    EXPECT_FALSE(cfText("a\xc3"));
}

TEST_F(CoreFoundationTypesTest, HalfACharacterReadsAsAQuestionMark) {
    const std::array<UniChar, 3> units{'a', 0xD83D, 'b'};
    const CfOwned text(CFStringCreateWithCharacters(kCFAllocatorDefault, units.data(), 3));
    EXPECT_EQ(textOf(text.get()), "a?b");
}

TEST_F(CoreFoundationTypesTest, ValuesAreReadAsWhatTheyAre) {
    EXPECT_EQ(textIn(cfText("a").get()), "a");
    EXPECT_EQ(booleanIn(kCFBooleanTrue), true);
    EXPECT_EQ(booleanIn(kCFBooleanFalse), false);
    EXPECT_EQ(booleanIn(cfBoolean(true)), true);
    EXPECT_EQ(booleanIn(cfBoolean(false)), false);
    EXPECT_EQ(integerIn(number(std::int64_t{-7}).get()), -7);
    EXPECT_EQ(integerIn(number(12.0).get()), 12);
}

TEST_F(CoreFoundationTypesTest, AbsentAndOtherValuesAreNothing) {
    const auto text = cfText("1");
    const auto one = number(1.0);
    EXPECT_EQ(textIn(nullptr), std::nullopt);
    EXPECT_EQ(textIn(one.get()), std::nullopt);
    EXPECT_EQ(booleanIn(nullptr), std::nullopt);
    EXPECT_EQ(booleanIn(one.get()), std::nullopt);
    EXPECT_EQ(integerIn(nullptr), std::nullopt);
    EXPECT_EQ(integerIn(text.get()), std::nullopt);
    EXPECT_EQ(integerIn(kCFBooleanTrue), std::nullopt);
}

TEST_F(CoreFoundationTypesTest, NumbersThatAreNoIntegersOfThisSizeAreNothing) {
    EXPECT_EQ(integerIn(number(0.5).get()), std::nullopt);
    EXPECT_EQ(integerIn(number(std::int64_t{1} << 40U).get()), std::nullopt);
}

} // namespace
} // namespace quillon
