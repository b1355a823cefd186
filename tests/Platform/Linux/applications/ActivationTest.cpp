#include "LinuxWindowsBench.h"
#include "RoundTrips.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using ActivationTest = LinuxWindowsBench;

TEST_F(ActivationTest, WaitsOnceToBringAnyNumberOfWindowsForward) {
    for (int i = 0; i < 200; ++i) {
        others.open(7, "A");
    }
    const auto target = windows->runningApplication(7);
    ASSERT_TRUE(target);
    const int before = roundTrips();
    target->activate(everything);
    EXPECT_EQ(roundTrips() - before, 1);
    EXPECT_EQ(requests().size(), 201U);
}

TEST_F(ActivationTest, WhatWasAskedForMakesThePastInvalid) {
    others.open(7, "A");
    const auto target = windows->runningApplication(7);
    others.open(8, "B");
    EXPECT_EQ(windows->copyWindowList(noDesktop)->size(), 1U);
    target->activate(everything);
    EXPECT_EQ(windows->copyWindowList(noDesktop)->size(), 2U);
}

TEST_F(ActivationTest, AsksAsTheUserWouldAndAtThePresentTime) {
    const xcb_window_t window = others.open(7, "A");
    windows->runningApplication(7)->activate(ActivationOptions::ignoringOtherApps);
    const auto asked = requests();
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].type, others.atoms().restack);
    EXPECT_EQ(asked[0].window, window);
    EXPECT_EQ(asked[1].type, others.atoms().activeWindow);
    EXPECT_EQ(asked[1].window, window);
    EXPECT_EQ(asked[1].values[0], 2U) << "not the application itself";
    EXPECT_NE(asked[1].values[1], 0U) << "a time";
}

TEST_F(ActivationTest, NothingIsAskedAboutWindowsThatAreGoneOrMinimised) {
    const xcb_window_t first = others.open(7, "A");
    const xcb_window_t second = others.open(7, "A");
    const auto target = windows->runningApplication(7);
    others.close(second);
    target->activate(ActivationOptions::ignoringOtherApps);
    ASSERT_EQ(requests().size(), 2U) << "the other one";
    others.set(first, others.atoms().state, XCB_ATOM_ATOM, {others.atoms().hidden});
    target->activate(everything);
    EXPECT_TRUE(requests().empty());
    others.close(first);
    target->activate(everything);
    EXPECT_TRUE(requests().empty());
    EXPECT_TRUE(windows->copyWindowList(noDesktop)) << "the connection has survived";
}

TEST_F(ActivationTest, FollowsOnlyWhenNothingIsOnThePresentDesktop) {
    const xcb_window_t lower = others.open(7, "A");
    const xcb_window_t upper = others.open(7, "A");
    const auto target = windows->runningApplication(7);
    others.set(upper, others.atoms().desktop, XCB_ATOM_CARDINAL, {2});
    target->activate(everything);
    auto asked = requests();
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[1].window, lower);
    others.set(lower, others.atoms().desktop, XCB_ATOM_CARDINAL, {1});
    target->activate(everything);
    asked = requests();
    ASSERT_EQ(asked.size(), 3U);
    EXPECT_EQ(asked[0].type, others.atoms().currentDesktop);
    EXPECT_EQ(asked[0].values[0], 2U);
    EXPECT_EQ(asked[2].window, upper);
}

TEST_F(ActivationTest, ElementsAreTheWindowsThatCanBeSeenFirst) {
    const xcb_window_t lower = others.open(7, "A");
    const xcb_window_t elsewhere = others.open(7, "A");
    const xcb_window_t minimised = others.open(7, "A");
    others.open(8, "B");
    others.set(elsewhere, others.atoms().desktop, XCB_ATOM_CARDINAL, {2});
    others.set(minimised, others.atoms().state, XCB_ATOM_ATOM, {others.atoms().hidden});
    const auto element = windows->application(7);
    EXPECT_EQ(element->elements("AXChildren"), std::nullopt);
    EXPECT_EQ(windows->application(9)->elements("AXWindows"), std::nullopt);
    const auto found = element->elements("AXWindows");
    ASSERT_TRUE(found);
    ASSERT_EQ(found->size(), 2U);
    EXPECT_TRUE(found->front()->performAction("AXRaise"));
    EXPECT_EQ(requests().at(0).window, lower);
    EXPECT_TRUE(found->front()->setBool("AXMain", true));
    EXPECT_FALSE(found->front()->setBool("AXMain", false));
    EXPECT_FALSE(found->front()->performAction("AXPress"));
    EXPECT_EQ(requests().size(), 1U);
    EXPECT_TRUE(element->setElement("AXFocusedWindow", found->back()));
    EXPECT_EQ(requests().at(0).type, others.atoms().currentDesktop);
    EXPECT_FALSE(element->setElement("AXFocusedWindow", nullptr));
    EXPECT_FALSE(element->setElement("AXFocusedWindow", element));
    EXPECT_FALSE(windows->application(8)->setElement("AXFocusedWindow", found->front()));
    others.close(lower);
    EXPECT_FALSE(found->front()->performAction("AXRaise"));
    EXPECT_FALSE(element->setElement("AXFocusedWindow", found->front()));
}

TEST_F(ActivationTest, AWindowManagerThatTakesNoRestackingRaisesWithTheKeyboard) {
    others.setSupported({});
    const xcb_window_t lower = others.open(7, "A");
    const xcb_window_t upper = others.open(7, "A");
    windows->runningApplication(7)->activate(everything);
    const auto asked = requests();
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].window, lower);
    EXPECT_EQ(asked[1].window, upper);
    EXPECT_EQ(asked[1].type, others.atoms().activeWindow);
}

} // namespace
} // namespace quillon
