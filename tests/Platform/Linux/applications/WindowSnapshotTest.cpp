#include "Platform/Linux/applications/WindowSnapshot.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

constexpr ProcessId self = 1000;

struct WindowSnapshotTest : testing::Test {
    DesktopFacts facts;
    ApplicationNames names;

    WindowFacts& add(xcb_window_t id, std::optional<ProcessId> process,
                     const std::string& className = "") {
        WindowFacts window;
        window.id = id;
        window.client = id & ~0xFFU;
        window.claimedProcess = process;
        window.className = className;
        window.state.isManaged = true;
        return facts.windows.emplace_back(window);
    }

    [[nodiscard]] std::unique_ptr<WindowSnapshot> snapshot() const {
        return std::make_unique<WindowSnapshot>(facts, names,
                                                WindowSnapshot::Viewer{self, "here", nullptr});
    }
};

TEST_F(WindowSnapshotTest, NamesAsPeopleCallThemElseAsTheirWindowsDo) {
    names.add("editor", *DesktopEntry::parse("[Desktop Entry]\nName=Text Editor\n"));
    add(1, 1, "Editor");
    add(2, 2, "Unknown");
    add(3, 3).instance = "only-instance";
    add(4, 4);
    add(5, self, "Editor");
    add(6, std::nullopt, "Editor");
    const auto windows = snapshot();
    const auto name = [&](std::size_t i) { return windows->windows()[i].description.ownerName; };
    EXPECT_EQ(name(0), "Text Editor");
    EXPECT_EQ(name(1), "Unknown");
    EXPECT_EQ(name(2), "only-instance");
    EXPECT_EQ(name(3), std::nullopt);
    EXPECT_EQ(name(4), "PelorinApp");
    EXPECT_EQ(windows->windows()[5].description.ownerProcess, std::nullopt);
    EXPECT_EQ(windows->windows()[0].description.bounds, std::nullopt) << "no screens";
}

TEST_F(WindowSnapshotTest, RegularIsWhatTheTaskbarShows) {
    add(1, 1).state.skipsTaskbar = true;
    add(2, 2).state.skipsTaskbar = true;
    add(3, 2);
    add(4, 3).kind = WindowKind::dock;
    add(5, 4).state.isHidden = true; // minimised: the taskbar shows it
    const auto windows = snapshot();
    EXPECT_EQ(windows->application(1)->policy, ActivationPolicy::accessory);
    EXPECT_EQ(windows->application(2)->policy, ActivationPolicy::regular);
    EXPECT_EQ(windows->application(3)->policy, ActivationPolicy::accessory);
    EXPECT_EQ(windows->application(4)->policy, ActivationPolicy::regular);
    EXPECT_EQ(windows->application(5), nullptr);
}

TEST_F(WindowSnapshotTest, AnApplicationIsNamedAfterItsFirstWindowOfTheTaskbar) {
    add(1, 1, "Hint").state.skipsTaskbar = true;
    add(2, 1, "Writer");
    add(3, 1, "Calc");
    EXPECT_EQ(snapshot()->application(1)->name, "Writer");
    EXPECT_EQ(snapshot()->application(1)->windows.size(), 3U);
}

TEST_F(WindowSnapshotTest, TheFrontApplication) {
    add(0x101, 1);
    add(0x201, 2);
    EXPECT_EQ(snapshot()->front(), std::nullopt);
    facts.frontWindow = 0x201;
    facts.frontClient = 0x200;
    EXPECT_EQ(snapshot()->front(), 2);
    facts.frontWindow = 0x105; // a window within one, or not of the list
    facts.frontClient = 0x100;
    EXPECT_EQ(snapshot()->front(), 1);
    facts.frontWindow = 0x301; // of another connection of a process with windows
    facts.frontClient = 0x300;
    facts.frontProcess = 2;
    EXPECT_EQ(snapshot()->front(), 2);
    facts.frontProcess = 3; // as a window manager's, which has none
    EXPECT_EQ(snapshot()->front(), std::nullopt);
}

} // namespace
} // namespace quillon
