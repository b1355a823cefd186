#include "Platform/Linux/windows/ToolkitScreens.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

/// Where the toolkit has the pixel in which a point lies.
QPoint positionOf(Point point, const ScreenGeometry& geometry,
                  const std::vector<ToolkitScreen>& screens) {
    const PixelPoint pixel = geometry.toPixels(point);
    return toToolkit(pixel, toolkitScreenAt(pixel, screens));
}

TEST(ToolkitScreens, OneScreenUnscaled) {
    const ScreenGeometry geometry({{0, 0, 1280, 800}}, 1);
    const std::vector<ToolkitScreen> screens{{{0, 0, 1280, 800}, 1}};
    EXPECT_EQ(positionOf({0, 800}, geometry, screens), QPoint(0, 0));
    EXPECT_EQ(positionOf({100, 700}, geometry, screens), QPoint(100, 100));
}

TEST(ToolkitScreens, TheMainScreenNeedNotBeAtTheTopLeft) {
    const ScreenGeometry geometry({{500, 100, 780, 700}, {0, 0, 500, 800}}, 1);
    const std::vector<ToolkitScreen> screens{{{500, 100, 780, 700}, 1}, {{0, 0, 500, 800}, 1}};
    EXPECT_EQ(positionOf({0, 700}, geometry, screens), QPoint(500, 100));
    EXPECT_EQ(positionOf({-500, 800}, geometry, screens), QPoint(0, 0));
    EXPECT_EQ(positionOf({-1, 1}, geometry, screens), QPoint(499, 799));
}

TEST(ToolkitScreens, ScaledScreensKeepTheirCornersInPixels) {
    const ScreenGeometry geometry({{0, 0, 1280, 800}, {1280, 0, 1600, 1200}}, 2);
    const std::vector<ToolkitScreen> screens{{{0, 0, 640, 400}, 2}, {{1280, 0, 800, 600}, 2}};
    EXPECT_EQ(positionOf({0, 400}, geometry, screens), QPoint(0, 0));
    EXPECT_EQ(positionOf({100, 300}, geometry, screens), QPoint(100, 100));
    EXPECT_EQ(positionOf({640, 400}, geometry, screens), QPoint(1280, 0));
    EXPECT_EQ(positionOf({740, 350}, geometry, screens), QPoint(1380, 50));
}

TEST(ToolkitScreens, FractionsAreRounded) {
    const ScreenGeometry geometry({{0, 0, 1280, 800}}, 1.25);
    const std::vector<ToolkitScreen> screens{{{0, 0, 1024, 640}, 1.25}};
    EXPECT_EQ(geometry.toPixels({100.3, 640}), (PixelPoint{125, 0}));
    EXPECT_EQ(positionOf({100.3, 539.8}, geometry, screens), QPoint(100, 100));
}

TEST(ToolkitScreens, TheToolkitMayScaleByItself) {
    const ScreenGeometry geometry({{0, 0, 1280, 800}}, 1);
    const std::vector<ToolkitScreen> screens{{{0, 0, 640, 400}, 2}};
    EXPECT_EQ(positionOf({100, 700}, geometry, screens), QPoint(50, 50));
}

TEST(ToolkitScreens, APixelOnNoScreenCountsFromTheFirst) {
    const std::vector<ToolkitScreen> screens{{{0, 0, 1280, 800}, 1}, {{1280, 0, 500, 500}, 1}};
    EXPECT_EQ(toolkitScreenAt({1300, 700}, screens).geometry, screens[0].geometry);
    EXPECT_EQ(toolkitScreenAt({1300, 400}, screens).geometry, screens[1].geometry);
}

} // namespace
} // namespace quillon
