#include "LinuxWindowsBench.h"
#include "RoundTrips.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace quillon {
namespace {

using LinuxWindowsTest = LinuxWindowsBench;

TEST_F(LinuxWindowsTest, WithoutAListThereIsNone) {
    ASSERT_TRUE(windows->copyWindowList(noDesktop));
    EXPECT_TRUE(windows->copyWindowList(noDesktop)->empty());
    EXPECT_EQ(windows->frontmostApplication(), nullptr);
    runLoop.drain();
    others.remove(others.connection().root(), others.atoms().clientListStacking);
    EXPECT_EQ(windows->copyWindowList(noDesktop), std::nullopt);
    EXPECT_EQ(windows->frontmostApplication(), nullptr);
    EXPECT_EQ(windows->runningApplication(1), nullptr);
}

TEST_F(LinuxWindowsTest, WindowsThatAreNotInTheOrderYetAreInFront) {
    const auto& atoms = others.atoms();
    const auto root = others.connection().root();
    const xcb_window_t first = others.open(1, "A");
    const xcb_window_t second = others.open(2, "B");
    const auto front = [&] {
        runLoop.drain();
        const auto list = windows->copyWindowList(noDesktop);
        return list && list->size() == 2 ? list->front().ownerProcess : std::nullopt;
    };
    others.set(root, atoms.clientList, XCB_ATOM_WINDOW, {first, second});
    EXPECT_EQ(front(), 2);
    others.set(root, atoms.clientListStacking, XCB_ATOM_WINDOW, {second});
    EXPECT_EQ(front(), 1);
    others.remove(root, atoms.clientListStacking);
    EXPECT_EQ(front(), 2);
    windows->runningApplication(1)->activate(everything);
    EXPECT_EQ(requests().size(), 2U);
}

TEST_F(LinuxWindowsTest, TellsWhatIsKnownOfAWindow) {
    const xcb_window_t window = others.open(77, "Editor");
    others.set(window, others.atoms().frameExtents, XCB_ATOM_CARDINAL, {1, 2, 20, 5});
    const auto told = description();
    EXPECT_EQ(told.ownerProcess, 77);
    EXPECT_EQ(told.ownerName, "Text Editor");
    EXPECT_EQ(told.layer, 0);
    EXPECT_EQ(told.bounds, (Rect{99, 30, 303, 225}));
    EXPECT_EQ(told.isOnScreen, true);
}

TEST_F(LinuxWindowsTest, TheServerKnowsWhoseWindowItIsWhereTheWindowDoesNotSay) {
    const xcb_window_t window = others.open(0, "Unknown");
    EXPECT_EQ(description().ownerProcess, getpid());
    EXPECT_EQ(description().ownerName, "PelorinApp");
    others.set(window, others.atoms().process, XCB_ATOM_CARDINAL, {77});
    EXPECT_EQ(description().ownerProcess, 77);
    EXPECT_EQ(description().ownerName, "Unknown");
    others.setText(window, others.atoms().machine, "somewhere.else");
    EXPECT_EQ(description().ownerProcess, getpid());
    std::array<char, 256> here{};
    gethostname(here.data(), here.size() - 1);
    others.setText(window, others.atoms().machine, here.data());
    EXPECT_EQ(description().ownerProcess, 77);
}

TEST_F(LinuxWindowsTest, StatesAndTypes) {
    const xcb_window_t window = others.open(77, "Editor");
    others.set(window, others.atoms().type, XCB_ATOM_ATOM,
               {atom("_VENDOR_TYPE"), atom("_NET_WM_WINDOW_TYPE_DOCK")});
    EXPECT_EQ(description().layer, 20);
    others.set(window, others.atoms().type, XCB_ATOM_ATOM, {atom("_NET_WM_WINDOW_TYPE_DIALOG")});
    EXPECT_EQ(description().layer, 0);
    EXPECT_EQ(windows->runningApplication(77)->activationPolicy(), ActivationPolicy::regular);
    others.set(window, others.atoms().state, XCB_ATOM_ATOM, {others.atoms().skipTaskbar});
    EXPECT_EQ(description().isOnScreen, true);
    EXPECT_EQ(windows->runningApplication(77)->activationPolicy(), ActivationPolicy::accessory);
    others.set(window, others.atoms().state, XCB_ATOM_ATOM, {others.atoms().hidden});
    EXPECT_EQ(description().isOnScreen, false);
    others.remove(window, others.atoms().state);
    EXPECT_EQ(description().isOnScreen, true);
    others.setDesktop(3);
    EXPECT_EQ(description().isOnScreen, false);
    others.set(window, others.atoms().desktop, XCB_ATOM_CARDINAL, {everyDesktop});
    EXPECT_EQ(description().isOnScreen, true);
    others.remove(window, others.atoms().wmState);
    EXPECT_EQ(description().isOnScreen, false) << "withdrawn";
    others.set(window, others.atoms().type, XCB_ATOM_ATOM, {atom("_NET_WM_WINDOW_TYPE_DESKTOP")});
    runLoop.drain();
    EXPECT_TRUE(windows->copyWindowList(noDesktop)->empty());
    EXPECT_EQ(windows->copyWindowList(WindowListOptions{})->size(), 1U);
}

TEST_F(LinuxWindowsTest, TheFrontApplication) {
    const xcb_window_t first = others.open(1, "A");
    const xcb_window_t second = others.open(2, "B");
    xcb_map_window(others.connection().get(), first);
    EXPECT_EQ(windows->frontmostApplication(), nullptr) << "nobody gets what is typed";
    runLoop.drain();
    others.setActive(second);
    ASSERT_TRUE(windows->frontmostApplication());
    EXPECT_EQ(windows->frontmostApplication()->processIdentifier(), 2);
    EXPECT_EQ(windows->frontmostApplication()->localizedName(), "B");
    runLoop.drain();
    others.remove(others.connection().root(), others.atoms().activeWindow);
    xcb_set_input_focus(others.connection().get(), XCB_INPUT_FOCUS_NONE, first, XCB_CURRENT_TIME);
    others.connection().sync();
    ASSERT_TRUE(windows->frontmostApplication());
    EXPECT_EQ(windows->frontmostApplication()->processIdentifier(), 1);
}

TEST_F(LinuxWindowsTest, WaitsTwiceForAListOfAnyLength) {
    const auto waits = [&] {
        runLoop.drain();
        const int before = roundTrips();
        const auto list = windows->copyWindowList(noDesktop);
        for (const auto& window : *list) {
            EXPECT_TRUE(windows->runningApplication(*window.ownerProcess));
        }
        [[maybe_unused]] const auto front = windows->frontmostApplication();
        return roundTrips() - before;
    };
    others.open(1, "A");
    waits(); // also makes the connection
    EXPECT_EQ(waits(), 2);
    for (std::uint32_t process = 2; process <= 200; ++process) {
        others.open(process, "A");
    }
    EXPECT_EQ(waits(), 2);
    EXPECT_EQ(windows->copyWindowList(noDesktop)->size(), 200U);
}

TEST_F(LinuxWindowsTest, WhatIsReadIsGoodUntilTheLoopGoesOn) {
    const xcb_window_t window = others.open(7, "A");
    ASSERT_TRUE(windows->runningApplication(7));
    others.close(window);
    EXPECT_TRUE(windows->runningApplication(7));
    EXPECT_EQ(windows->copyWindowList(noDesktop)->size(), 1U);
    runLoop.drain();
    EXPECT_FALSE(windows->runningApplication(7));
    EXPECT_TRUE(windows->copyWindowList(noDesktop)->empty());
}

TEST_F(LinuxWindowsTest, SurvivesTheServer) {
    others.open(7, "A");
    const auto target = windows->runningApplication(7);
    const auto found = windows->application(7)->elements("AXWindows");
    ASSERT_TRUE(target && found);
    server.kill();
    target->activate(everything);
    EXPECT_FALSE(found->front()->performAction("AXRaise"));
    EXPECT_EQ(windows->copyWindowList(noDesktop), std::nullopt);
    EXPECT_EQ(windows->frontmostApplication(), nullptr);
    EXPECT_EQ(windows->runningApplication(7), nullptr);
    EXPECT_EQ(windows->application(7)->elements("AXWindows"), std::nullopt);
    const XServer another;
    OtherPrograms onIt;
    onIt.open(8, "B");
    runLoop.drain();
    EXPECT_TRUE(windows->runningApplication(8)) << "one that comes later is found";
}

TEST_F(LinuxWindowsTest, WhatIsHandedOutMayOutliveIt) {
    others.open(7, "A");
    const auto target = windows->runningApplication(7);
    const auto element = windows->application(7);
    const auto found = element->elements("AXWindows");
    windows.reset();
    target->activate(everything);
    EXPECT_EQ(element->elements("AXWindows"), std::nullopt);
    EXPECT_FALSE(found->front()->performAction("AXRaise"));
    EXPECT_EQ(target->localizedName(), "A");
    runLoop.drain();
    EXPECT_TRUE(requests().empty());
}

} // namespace
} // namespace quillon
