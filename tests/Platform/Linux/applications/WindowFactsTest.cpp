#include "Platform/Linux/applications/WindowFacts.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(WindowFacts, OnlyOrdinaryWindowsAreInLayerZero) {
    EXPECT_EQ(layerOf(WindowKind::ordinary), 0);
    EXPECT_LT(layerOf(WindowKind::desktop), 0);
    for (const WindowKind kind : {WindowKind::palette, WindowKind::dock, WindowKind::notice,
                                  WindowKind::menu, WindowKind::tip}) {
        EXPECT_GT(layerOf(kind), 0);
    }
}

TEST(WindowFacts, TaskbarsShowOrdinaryWindowsThatDoNotAskToBeSkipped) {
    WindowFacts window;
    EXPECT_TRUE(hasTaskbarButton(window));
    window.state.skipsTaskbar = true;
    EXPECT_FALSE(hasTaskbarButton(window));
    EXPECT_FALSE(hasTaskbarButton({.kind = WindowKind::palette}));
    EXPECT_FALSE(hasTaskbarButton({.kind = WindowKind::dock}));
}

struct OnScreenCase {
    const char* what;
    WindowState state;
    std::optional<std::uint32_t> current;
    bool isOnScreen;
    bool isMinimised;
};

TEST(WindowFacts, OnScreen) {
    const OnScreenCase cases[] = {
        {"here", {.desktop = 1, .isManaged = true}, 1, true, false},
        {"elsewhere", {.desktop = 2, .isManaged = true}, 1, false, false},
        {"elsewhere, which some call iconic",
         {.desktop = 2, .isManaged = true, .isIconic = true},
         1,
         false,
         false},
        {"everywhere", {.desktop = everyDesktop, .isManaged = true}, 1, true, false},
        {"minimised", {.desktop = 1, .isManaged = true, .isHidden = true}, 1, false, true},
        {"minimised elsewhere",
         {.desktop = 2, .isManaged = true, .isHidden = true},
         1,
         false,
         true},
        {"iconic here", {.desktop = 1, .isManaged = true, .isIconic = true}, 1, false, true},
        {"iconic everywhere",
         {.desktop = everyDesktop, .isManaged = true, .isIconic = true},
         1,
         false,
         true},
        {"rolled up",
         {.desktop = 1, .isManaged = true, .isIconic = true, .isHidden = true, .isShaded = true},
         1,
         true,
         false},
        {"withdrawn", {.desktop = 1}, 1, false, false},
        {"no desktops", {.isManaged = true}, std::nullopt, true, false},
        {"no desktops, iconic", {.isManaged = true, .isIconic = true}, std::nullopt, false, true},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(isOnScreen(each.state, each.current), each.isOnScreen) << each.what;
        EXPECT_EQ(isMinimised(each.state, each.current), each.isMinimised) << each.what;
    }
}

TEST(WindowFacts, OwnerAsTheWindowSaysElseAsTheServerKnows) {
    EXPECT_EQ(ownerProcess({.claimedProcess = 7, .connectedProcess = 8}, "here"), 7);
    EXPECT_EQ(ownerProcess({.connectedProcess = 8}, "here"), 8);
    EXPECT_EQ(ownerProcess({}, "here"), std::nullopt);
}

TEST(WindowFacts, AProcessOfAnotherMachineIsNoneOfThisOne) {
    WindowFacts window{.claimedProcess = 7, .machine = "there", .connectedProcess = 8};
    EXPECT_EQ(ownerProcess(window, "here"), 8);
    window.connectedProcess.reset();
    EXPECT_EQ(ownerProcess(window, "here"), std::nullopt);
    EXPECT_EQ(ownerProcess(window, "There.example.org"), 7) << "with and without domain";
    window.machine = "there.example.org";
    EXPECT_EQ(ownerProcess(window, "there"), 7);
    window.machine = "hereafter";
    EXPECT_EQ(ownerProcess(window, "here"), std::nullopt);
}

TEST(WindowFacts, BoundsWithFrameAndWithoutShadow) {
    const ScreenGeometry geometry({{0, 0, 1000, 800}}, 1);
    WindowFacts window;
    EXPECT_EQ(boundsOf(window, geometry), std::nullopt);
    window.interior = PixelRect{100, 50, 300, 200};
    EXPECT_EQ(boundsOf(window, geometry), (Rect{100, 50, 300, 200}));
    window.frame = {.left = 1, .right = 2, .top = 20, .bottom = 5};
    EXPECT_EQ(boundsOf(window, geometry), (Rect{99, 30, 303, 225}));
    window.frame = {};
    window.shadow = {.left = 10, .right = 20, .top = 30, .bottom = 40};
    EXPECT_EQ(boundsOf(window, geometry), (Rect{110, 80, 270, 130}));
    window.shadow = {.left = 400};
    EXPECT_EQ(boundsOf(window, geometry)->width, 0) << "nonsense";
}

TEST(WindowFacts, BoundsAreFromTheTopLeftOfTheMainScreenInPoints) {
    const ScreenGeometry geometry({{1000, 200, 800, 600}, {0, 0, 1000, 1000}}, 2);
    EXPECT_EQ(boundsOf({.interior = PixelRect{1100, 260, 300, 200}}, geometry),
              (Rect{50, 30, 150, 100}));
    EXPECT_EQ(boundsOf({.interior = PixelRect{0, 0, 300, 200}}, geometry),
              (Rect{-500, -100, 150, 100}));
}

} // namespace
} // namespace quillon
