#include "Platform/Linux/tray/PanelWindows.h"
#include "Platform/Linux/tray/XEmbedBench.h"
#include "Platform/Linux/x11/X11Properties.h"

#include <cstring>

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct XEmbedTest : testing::Test, XEmbedBench {
    [[nodiscard]] int itemWidth() const {
        const auto place = placeOf(tray->connection(), tray->item());
        return place ? place->width : 0;
    }

    /// What the tray is told that the item can be shrunk to.
    [[nodiscard]] QSize leastSize() const {
        const auto hints = cardinals(tray->connection(), tray->item(), XCB_ATOM_WM_NORMAL_HINTS);
        return hints && hints->size() > 6
                   ? QSize(static_cast<int>((*hints)[5]), static_cast<int>((*hints)[6]))
                   : QSize();
    }
};

TEST_F(XEmbedTest, SaysWhatItIs) {
    dock();
    const auto& x = tray->connection();
    EXPECT_EQ(text(x, tray->item(), tray->atoms().windowName), "Quillon");
    EXPECT_EQ(text(x, tray->item(), XCB_ATOM_WM_CLASS), std::string("quillon\0Quillon\0", 16));
    EXPECT_EQ(cardinals(x, tray->item(), tray->atoms().embedInfo),
              (std::vector<std::uint32_t>{0, 1}));
}

TEST_F(XEmbedTest, GeometryInPointsFromTheBottomLeft) {
    dock();
    EXPECT_EQ(item->button()->onScreen(), (Rect{1200, 775, 22, 22}));
    EXPECT_EQ(item->button()->bounds(), (Rect{0, 0, 22, 22}));
    EXPECT_EQ(bar.thickness(), 22);
    EXPECT_EQ(bar.panelOnScreen(), (Rect{0, 772, 1280, 28}));
    EXPECT_FALSE(bar.isVertical());

    tray->moveItem({100, 0, 40, 28});
    EXPECT_EQ(item->button()->onScreen(), (Rect{100, 772, 40, 28}));
    EXPECT_DOUBLE_EQ(item->button()->bounds().width, 40 * 22.0 / 28) << "of the content's points";
    EXPECT_EQ(bar.thickness(), 22);
}

TEST_F(XEmbedTest, GeometryAtTheDesktopsScale) {
    dock();
    setResources("Xft.dpi:\t192\n");
    EXPECT_TRUE(until([this] { return item->button()->onScreen() == Rect{600, 376.5, 22, 22}; }));
    EXPECT_EQ(bar.panelOnScreen(), (Rect{0, 386, 640, 14}));
}

TEST_F(XEmbedTest, UprightPanels) {
    dock({.panel = {0, 0, 40, 800}, .item = {9, 700, 22, 22}});
    EXPECT_TRUE(bar.isVertical());
}

TEST_F(XEmbedTest, IsThereBeforeTheEventLoopRuns) {
    tray = std::make_unique<FakeTray>(FakeTray::Settings{.item = {1200, 0, 28, 28}});
    item = bar.statusItem(squareStatusItemLength);
    tray->dockItem();
    EXPECT_LT(brightest(), 0x40);
    showLogo();
    tray->connection().sync();
    EXPECT_TRUE(item->button()->isInWindow());
    EXPECT_EQ(item->button()->bounds(), (Rect{0, 0, 22, 22}));
    EXPECT_GT(brightest(), 0xF0);
}

TEST_F(XEmbedTest, TheServerPaintsItAgainWithoutUs) {
    dock();
    settle();
    ASSERT_GT(brightest(), 0xF0);
    const QImage before = tray->itemPixels();
    xcb_unmap_window(tray->connection().get(), tray->item());
    xcb_map_window(tray->connection().get(), tray->item());
    tray->connection().sync();
    EXPECT_EQ(tray->itemPixels(), before);
}

TEST_F(XEmbedTest, AlphaWhereTheTrayGrantsIt) {
    dock({.hasAlpha = true});
    ASSERT_TRUE(until([this] { return brightest() > 0xF0; }));
    const QImage pixels = tray->itemPixels();
    ASSERT_EQ(pixels.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(qAlpha(pixels.pixel(0, 0)), 0);
}

TEST_F(XEmbedTest, ThePanelsGroundWhereItGrantsNone) {
    dock({.ground = 0x204060});
    ASSERT_TRUE(until([this] { return tray->itemPixels().pixel(0, 0) == 0xFF204060; }));
    EXPECT_GT(brightest(), 0xF0);
}

TEST_F(XEmbedTest, DarkOnALightPanel) {
    dock({.ground = 0xE8E8E8, .hasAlpha = true});
    EXPECT_TRUE(until([this] {
        const QImage pixels = tray->itemPixels();
        int opaque = 0;
        for (int i = 0; i < pixels.width() * pixels.height(); ++i) {
            opaque += qAlpha(pixels.pixel(i % pixels.width(), i / pixels.width())) > 250 ? 1 : 0;
        }
        return opaque > 0 && brightest() == 0;
    }));
}

TEST_F(XEmbedTest, LooksAgainWhenThePanelHasPaintedItself) {
    dock({.ground = 0xE8E8E8});
    ASSERT_TRUE(
        until([this] { return tray->itemPixels().pixelColor(0, 0) == QColor(0xE8, 0xE8, 0xE8); }));
    settle();
    tray->setGround(0x101010);
    EXPECT_LT(darkest(), 0x10);
    loop.advance(paintedSeconds);
    EXPECT_EQ(tray->itemPixels().pixelColor(0, 0), QColor(0x10, 0x10, 0x10));
    EXPECT_GT(brightest(), 0xF0);
    EXPECT_EQ(loop.timerCount(), 0U) << "and then no more";
}

TEST_F(XEmbedTest, WhatIsSeenCountsForMoreThanWhatTheTraySays) {
    dock({.ground = 0x606060, .colors = {0, 0, 0}}); // black labels, on a panel that is rather dark
    EXPECT_TRUE(until([this] { return brightest() == 0xFF && darkest() == 0x60; }));
    tray->setGround(0xE8E8E8);
    tray->setColors({0xFFFF, 0xFFFF, 0xFFFF});
    EXPECT_TRUE(until([this] { return brightest() == 0xE8 && darkest() == 0; }));
}

TEST_F(XEmbedTest, FillsTheItemHoweverLargeThePanelMakesIt) {
    dock({.item = {1200, 0, 48, 48}});
    settle();
    const QImage pixels = tray->itemPixels();
    int left = pixels.width();
    int right = 0;
    for (int i = 0; i < pixels.width() * pixels.height(); ++i) {
        const int x = i % pixels.width();
        if (qGray(pixels.pixel(x, i / pixels.width())) > 0x80) {
            left = std::min(left, x);
            right = std::max(right, x);
        }
    }
    EXPECT_GT(right - left, 34);
}

TEST_F(XEmbedTest, LooksAtThePanelAgainWhenItShowsSomethingElseLater) {
    dock({.ground = 0x101010});
    settle();
    loop.advance(10);
    tray->setGround(0xE8E8E8);
    const auto level = showLevel({0, 0, 22, 22}, {0, 0, 22, 22});
    settle();
    EXPECT_EQ(darkest(), 0);
}

TEST_F(XEmbedTest, FadesWithTheAlphaOfTheView) {
    dock({.ground = 0x000000});
    const auto level = showLevel({0, 0, 22, 22}, {0, 0, 22, 22});
    settle();
    const int full = brightest();
    EXPECT_GT(full, 0xC0);
    item->customView()->setAlphaValue(0.5);
    settle();
    EXPECT_NEAR(brightest(), full / 2, 3);
    item->customView()->setAlphaValue(0);
    settle();
    EXPECT_EQ(brightest(), 0);
}

TEST_F(XEmbedTest, DrawsOncePerTurnAndOnlyWhenSomethingChanged) {
    dock();
    const auto level = showLevel({0, 0, 22, 22}, {0, 0, 22, 22});
    settle();
    loop.advance(paintedSeconds);
    level->draws = 0;
    level->setAlphaValue(0.5);
    level->setAlphaValue(0.6);
    level->setNeedsDisplay();
    EXPECT_EQ(level->draws, 0);
    settle();
    EXPECT_EQ(level->draws, 1);
    settle();
    EXPECT_EQ(level->draws, 1);
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(XEmbedTest, LengthIsAskedOfThePanel) {
    dock();
    item->setLength(60);
    showLevel({0, 0, 60, 22}, {0, 0, 60, 22});
    ASSERT_TRUE(until([this] { return bar.thickness() == 22 && itemWidth() == 60; }));
    EXPECT_EQ(leastSize(), QSize(60, 22));
}

TEST_F(XEmbedTest, TheButtonIsAsWideAsThePanelIsThick) {
    dock({.item = {1200, 0, 28, 28}});
    item->setLength(60);
    settle();
    EXPECT_EQ(itemWidth(), 28);
    showLevel({0, 0, 60, 22}, {0, 0, 60, 22});
    ASSERT_TRUE(until([this] { return itemWidth() == 76; })) << "60 points of an item of 28 pixels";
    item->setCustomView(nullptr);
    EXPECT_TRUE(until([this] { return itemWidth() == 28; }));
    EXPECT_EQ(leastSize(), QSize(22, 22)) << "the next panel may be thinner";

    tray = std::make_unique<FakeTray>(FakeTray::Settings{.item = {50, 2, 24, 24}});
    ASSERT_TRUE(until([this] { return tray->hasItem() && item->button()->isInWindow(); }));
    EXPECT_EQ(leastSize(), QSize(22, 22));
}

} // namespace
} // namespace quillon
