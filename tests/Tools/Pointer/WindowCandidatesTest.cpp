#include "Tools/Pointer/WindowCandidates.h"

#include "support/SwitcherBench.h"

#include <gtest/gtest.h>

#include <functional>

namespace quillon {
namespace {

struct WindowCandidatesTest : testing::Test, SwitcherBench {
    std::vector<WindowCandidate> collect() {
        return collectCandidates(desktop.windows, desktop.windows, exclusions);
    }
    WindowExclusions exclusions;
};

using Candidates = std::vector<WindowCandidate>;

TEST_F(WindowCandidatesTest, NoListCountsAsAnEmptyOne) {
    open(1, "Mail");
    desktop.windows.hasWindowList = false;
    EXPECT_TRUE(collect().empty());
}

TEST_F(WindowCandidatesTest, OnePerProcessByName) {
    open(3, "Writer");
    open(1, "Mail");
    open(3, "Writer");
    EXPECT_EQ(collect(), (Candidates{{1, "Mail"}, {3, "Writer"}}));
}

TEST_F(WindowCandidatesTest, FrontMostWindowGivesTheName) {
    open(1, "Zebra");
    open(1, "Ant");
    EXPECT_EQ(collect(), (Candidates{{1, "Zebra"}}));
}

TEST_F(WindowCandidatesTest, CapitalsComeBeforeSmallLettersAndThoseBeforeOtherScripts) {
    for (const auto& [process, name] :
         {std::pair{1, "Émile"}, {2, "a"}, {3, "Z"}, {4, "z"}, {5, "A"}}) {
        open(process, name);
    }
    EXPECT_EQ(collect(), (Candidates{{5, "A"}, {3, "Z"}, {2, "a"}, {4, "z"}, {1, "Émile"}}));
}

TEST_F(WindowCandidatesTest, SameNameGoesByProcessWhicheverIsInFront) {
    open(9, "Term");
    open(4, "Term");
    EXPECT_EQ(collect(), (Candidates{{4, "Term"}, {9, "Term"}}));
}

struct WindowFault {
    const char* name;
    std::function<void(WindowDescription&)> spoil;
};
void PrintTo(const WindowFault& fault, std::ostream* out) { *out << fault.name; }

struct UnusableWindow : testing::TestWithParam<WindowFault>, SwitcherBench {};

TEST_P(UnusableWindow, IsLeftOut) {
    WindowDescription spoiled = window(7, "Mail");
    GetParam().spoil(spoiled);
    desktop.windows.add(spoiled);
    EXPECT_TRUE(collectCandidates(desktop.windows, desktop.windows, {}).empty());
}

INSTANTIATE_TEST_SUITE_P(
    WindowCandidates, UnusableWindow,
    testing::Values(WindowFault{"above", [](auto& window) { window.layer = 1; }},
                    WindowFault{"below", [](auto& window) { window.layer = -1; }},
                    WindowFault{"off the screen", [](auto& window) { window.isOnScreen = false; }},
                    WindowFault{"narrow", [](auto& window) { window.bounds->width = 80; }},
                    WindowFault{"low", [](auto& window) { window.bounds->height = 60; }},
                    WindowFault{"our own", [](auto& window) { window.ownerName = "PelorinApp"; }},
                    WindowFault{"no layer", [](auto& window) { window.layer.reset(); }},
                    WindowFault{"no word on the screen",
                                [](auto& window) { window.isOnScreen.reset(); }},
                    WindowFault{"no bounds", [](auto& window) { window.bounds.reset(); }},
                    WindowFault{"no process", [](auto& window) { window.ownerProcess.reset(); }},
                    WindowFault{"no name", [](auto& window) { window.ownerName.reset(); }}));

TEST_F(WindowCandidatesTest, LargerByAHairIsEnough) {
    WindowDescription small = window(7, "Mail");
    small.bounds = Rect{0, 0, 80.5, 60.5};
    desktop.windows.add(small);
    EXPECT_EQ(collect().size(), 1U);
}

TEST_F(WindowCandidatesTest, SecondWindowCountsWhereTheFirstIsOfNoUse) {
    WindowDescription palette = window(7, "Mail");
    palette.bounds->height = 20;
    desktop.windows.add(palette);
    open(7, "Mail");
    EXPECT_EQ(collect().size(), 1U);
}

TEST_F(WindowCandidatesTest, AccessoriesAndProcessesThatAreNoApplicationAreLeftOut) {
    desktop.windows.add(window(7, "Tray"), ActivationPolicy::accessory);
    open(8, "Mail");
    WindowDescription orphan = window(9, "Ghost");
    desktop.windows.add(orphan);
    desktop.windows.forget(9);
    EXPECT_EQ(collect(), (Candidates{{8, "Mail"}}));
}

TEST_F(WindowCandidatesTest, ExcludesWholeNamesInAnyLetterCase) {
    exclusions.names = {"mail", "ÉMILE"};
    open(1, "Mail");
    open(2, "MAIL");
    open(3, "Mailer");
    open(4, "émile");
    open(5, "Ma");
    EXPECT_EQ(collect(), (Candidates{{5, "Ma"}, {3, "Mailer"}}));
}

TEST_F(WindowCandidatesTest, XcodeIsExcludedByItsSwitchAndItsExactName) {
    open(1, "Xcode");
    open(2, "xcode");
    EXPECT_EQ(collect(), (Candidates{{2, "xcode"}}));
    exclusions.xcode = false;
    EXPECT_EQ(collect().size(), 2U);
    exclusions.names = {"XCODE"};
    EXPECT_TRUE(collect().empty());
}

} // namespace
} // namespace quillon
