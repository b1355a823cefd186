#include "Platform/MacOS/MacWindowServer.h"

#include "ServicesTest.h"

namespace quillon {
namespace {

using fakes::fakeWindows;
using MacWindowServerTest = ServicesTest;

TEST_F(MacWindowServerTest, AsksForWindowsWithoutDesktopElementsRelativeToNone) {
    MacWindowServer().copyWindowList(WindowListOptions::excludeDesktopElements);
    ASSERT_EQ(fakeWindows().requests.size(), 1U);
    EXPECT_EQ(static_cast<int>(fakeWindows().requests[0].option), 16);
    EXPECT_EQ(fakeWindows().requests[0].relativeToWindow, 0U);
}

TEST_F(MacWindowServerTest, NoListIsNothingAndAnEmptyOneIsEmpty) {
    const auto empty = MacWindowServer().copyWindowList(WindowListOptions::excludeDesktopElements);
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->empty());
    fakeWindows().windows.reset();
    EXPECT_FALSE(MacWindowServer().copyWindowList(WindowListOptions::excludeDesktopElements));
}

TEST_F(MacWindowServerTest, WindowsAreDescribedFrontToBack) {
    fakeWindows().windows = {{
        {.ownerProcess = 7,
         .ownerName = "Räder",
         .layer = 0,
         .bounds = CGRectMake(10.5, 20, 640, 480),
         .isOnScreen = true},
        {.ownerProcess = 8,
         .ownerName = "Dock",
         .layer = -20,
         .bounds = CGRectMake(-5, 0, 1, 2),
         .isOnScreen = false},
    }};
    const auto windows =
        MacWindowServer().copyWindowList(WindowListOptions::excludeDesktopElements);
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 2U);
    const auto& front = (*windows)[0];
    EXPECT_EQ(front.ownerProcess, 7);
    EXPECT_EQ(front.ownerName, "Räder");
    EXPECT_EQ(front.layer, 0);
    EXPECT_EQ(front.bounds, (Rect{10.5, 20, 640, 480}));
    EXPECT_EQ(front.isOnScreen, true);
    const auto& back = (*windows)[1];
    EXPECT_EQ(back.ownerProcess, 8);
    EXPECT_EQ(back.ownerName, "Dock");
    EXPECT_EQ(back.layer, -20);
    EXPECT_EQ(back.bounds, (Rect{-5, 0, 1, 2}));
    EXPECT_EQ(back.isOnScreen, false);
}

void expectNothingIsKnown(const fakes::FakeListedWindow& window) {
    fakeWindows().windows = {{window}};
    const auto windows =
        MacWindowServer().copyWindowList(WindowListOptions::excludeDesktopElements);
    ASSERT_TRUE(windows);
    ASSERT_EQ(windows->size(), 1U);
    EXPECT_EQ((*windows)[0].ownerProcess, std::nullopt);
    EXPECT_EQ((*windows)[0].ownerName, std::nullopt);
    EXPECT_EQ((*windows)[0].layer, std::nullopt);
    EXPECT_EQ((*windows)[0].bounds, std::nullopt);
    EXPECT_EQ((*windows)[0].isOnScreen, std::nullopt);
}

TEST_F(MacWindowServerTest, WhatIsNotSaidIsAbsent) { expectNothingIsKnown({}); }

TEST_F(MacWindowServerTest, WhatIsOfAnotherTypeIsAbsent) {
    expectNothingIsKnown({.isOfOtherTypes = true});
}

TEST_F(MacWindowServerTest, NumbersThatDoNotFitAreAbsent) {
    expectNothingIsKnown({.ownerProcess = std::int64_t{1} << 40U, .layer = 0.5});
}

} // namespace
} // namespace quillon
