#include "Platform/Linux/applications/LinuxWindows.h"

#include "OtherPrograms.h"
#include "RoundTrips.h"

#include "Platform/Linux/x11/X11Session.h"
#include "Platform/Simulated/SimulatedDesktop.h"
#include "support/TemporaryFolder.h"
#include "support/XServer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include <unistd.h>

namespace quillon {
namespace {

constexpr auto everything = ActivationOptions::allWindows | ActivationOptions::ignoringOtherApps;
constexpr auto noDesktop = WindowListOptions::excludeDesktopElements;

struct LinuxWindowsTest : testing::Test {
    TemporaryFolder data;
    XServer server;
    int argc = 1;
    std::array<char, 5> name{"test"};
    std::array<char*, 2> argv{name.data(), nullptr};
    QCoreApplication application{argc, argv.data()};
    VirtualRunLoop runLoop;
    SimulatedDiagnostics diagnostics{[](std::string_view, const std::string&) {}};
    X11Displays displays;
    X11Session session{diagnostics, displays, [] {}};
    std::unique_ptr<LinuxWindows> windows;
    OtherPrograms others;

    void SetUp() override {
        ASSERT_TRUE(session.isProcessTrusted());
        writeFile(data.path() / "applications/editor.desktop",
                  "[Desktop Entry]\nType=Application\nName=Text Editor\n");
        setenv("XDG_DATA_HOME", data.path().c_str(), 1);
        setenv("XDG_DATA_DIRS", "/nowhere", 1);
        windows = std::make_unique<LinuxWindows>(runLoop, displays);
        runLoop.drain();
    }
    void TearDown() override {
        unsetenv("XDG_DATA_HOME");
        unsetenv("XDG_DATA_DIRS");
    }

    /// The only window's.
    WindowDescription description() {
        runLoop.drain();
        const auto list = windows->copyWindowList(noDesktop);
        return list && list->size() == 1 ? list->front() : WindowDescription{};
    }

    /// What was asked of the window manager since the last call, all of it: a list that is read
    /// after it comes after it.
    [[nodiscard]] std::vector<OtherPrograms::Request> requests() {
        if (windows) {
            runLoop.drain();
            [[maybe_unused]] const auto list = windows->copyWindowList(noDesktop);
            runLoop.drain();
        }
        return others.requests();
    }

    [[nodiscard]] xcb_atom_t atom(const char* text) const { return others.connection().atom(text); }
};

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

TEST_F(LinuxWindowsTest, WaitsOnceToBringAnyNumberOfWindowsForward) {
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

TEST_F(LinuxWindowsTest, WhatWasAskedForMakesThePastInvalid) {
    others.open(7, "A");
    const auto target = windows->runningApplication(7);
    others.open(8, "B");
    EXPECT_EQ(windows->copyWindowList(noDesktop)->size(), 1U);
    target->activate(everything);
    EXPECT_EQ(windows->copyWindowList(noDesktop)->size(), 2U);
}

TEST_F(LinuxWindowsTest, AsksAsTheUserWouldAndAtThePresentTime) {
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

TEST_F(LinuxWindowsTest, NothingIsAskedAboutWindowsThatAreGoneOrMinimised) {
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

TEST_F(LinuxWindowsTest, FollowsOnlyWhenNothingIsOnThePresentDesktop) {
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

TEST_F(LinuxWindowsTest, ElementsAreTheWindowsThatCanBeSeenFirst) {
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

TEST_F(LinuxWindowsTest, AWindowManagerThatTakesNoRestackingRaisesWithTheKeyboard) {
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
