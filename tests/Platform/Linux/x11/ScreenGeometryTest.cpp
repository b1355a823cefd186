#include "Platform/Linux/x11/ScreenGeometry.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(ScreenGeometry, OneScreenHasItsOriginAtTheBottomLeft) {
    const ScreenGeometry geometry({{0, 0, 1280, 800}}, 1);
    ASSERT_EQ(geometry.frames().size(), 1U);
    EXPECT_EQ(geometry.frames()[0], (Rect{0, 0, 1280, 800}));
    EXPECT_EQ(geometry.toPoints(0, 0), (Point{0, 800}));
    EXPECT_EQ(geometry.toPoints(1279, 799), (Point{1279, 1}));
}

TEST(ScreenGeometry, EveryPixelOfAScreenIsInItsFrame) {
    const ScreenGeometry geometry({{1920, 200, 1280, 1024}, {0, 0, 1920, 1080}}, 1.25);
    const Rect second = geometry.frames()[1];
    EXPECT_TRUE(second.contains(geometry.toPoints(0, 0)));
    EXPECT_TRUE(second.contains(geometry.toPoints(1919, 1079)));
    EXPECT_FALSE(second.contains(geometry.toPoints(1920, 500)));
    EXPECT_FALSE(second.contains(geometry.toPoints(500, 1080)));
}

TEST(ScreenGeometry, MainScreenNeedNotBeAtTheServersOrigin) {
    // The main screen stands right of another one and 200 pixels lower.
    const ScreenGeometry geometry({{1920, 200, 1280, 1024}, {0, 0, 1920, 1080}}, 1);
    EXPECT_EQ(geometry.frames()[0], (Rect{0, 0, 1280, 1024}));
    EXPECT_EQ(geometry.frames()[1], (Rect{-1920, 144, 1920, 1080}));
    EXPECT_EQ(geometry.toPoints(1920, 1224), (Point{0, 0}));
}

TEST(ScreenGeometry, ScaleTurnsPixelsIntoPoints) {
    const ScreenGeometry geometry({{0, 0, 2880, 1800}}, 2);
    EXPECT_EQ(geometry.frames()[0], (Rect{0, 0, 1440, 900}));
    EXPECT_EQ(geometry.toPoints(79, 0), (Point{39.5, 900}));
}

TEST(ScaleFromResources, ReadsTheFontResolution) {
    EXPECT_EQ(scaleFromResources("Xft.dpi:\t192\n"), 2);
    EXPECT_EQ(scaleFromResources("Xcursor.size:\t24\nXft.dpi: 120\nXft.rgba:\tnone\n"), 1.25);
    EXPECT_EQ(scaleFromResources("Xft.dpi:96"), 1);
}

TEST(ScaleFromResources, NothingOrNonsenseMeansUnscaled) {
    for (const char* resources :
         {"", "Xft.antialias:\t1\n", "Xft.dpi:\n", "Xft.dpi:\tbig\n", "Xft.dpi:\t0\n",
          "Xft.dpi:\t-96\n", "Xft.dpi:\t1e9\n", "Xft.dpi:\tnan\n"}) {
        EXPECT_EQ(scaleFromResources(resources), 1) << resources;
    }
}

TEST(ScreenGeometry, PointsBackToPixels) {
    const ScreenGeometry geometry({{500, 100, 780, 700}, {0, 0, 500, 800}}, 1.25);
    for (const PixelPoint pixel : {PixelPoint{500, 800}, {500, 100}, {0, 0}, {733, 421}}) {
        EXPECT_EQ(geometry.toPixels(geometry.toPoints(pixel.x, pixel.y)), pixel);
    }
}

} // namespace
} // namespace quillon
