#include "Platform/Linux/tray/FakeTray.h"
#include "Platform/Linux/tray/PanelWindows.h"
#include "Platform/Linux/tray/TrayBench.h"
#include "Platform/Linux/x11/X11Properties.h"

#include <QToolTip>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace quillon {
namespace {

constexpr double paintedSeconds = 0.3;

/// A view that draws a label and counts how often.
struct Level final : Button {
    mutable int draws = 0;
    void draw(DrawingContext& context) const override {
        ++draws;
        context.drawLabel("8", {2, 2, 10, 14}, {.size = 14}, 1);
    }
};

struct XEmbedTest : testing::Test, TrayBench {
    std::unique_ptr<FakeTray> tray;

    void dock(const FakeTray::Settings& settings = {}) {
        tray = std::make_unique<FakeTray>(settings);
        makeItem();
        ASSERT_TRUE(until([this] { return tray->hasItem() && item->button()->isInWindow(); }));
    }

    /// The program has seen and done all that has happened so far.
    void settle() {
        int turns = 0;
        tray->connection().sync();
        ASSERT_TRUE(until([&] { return ++turns > 4; }));
    }

    /// How bright what is drawn in the item is, 0…255: its brightest or darkest pixel.
    [[nodiscard]] int brightest() const {
        const QImage pixels = tray->itemPixels();
        int value = 0;
        for (int y = 0; y < pixels.height(); ++y) {
            for (int x = 0; x < pixels.width(); ++x) {
                value = std::max(value, qGray(pixels.pixel(x, y)));
            }
        }
        return value;
    }
    [[nodiscard]] int darkest() const {
        const QImage pixels = tray->itemPixels();
        int value = 255;
        for (int y = 0; y < pixels.height(); ++y) {
            for (int x = 0; x < pixels.width(); ++x) {
                value = std::min(value, qGray(pixels.pixel(x, y)));
            }
        }
        return value;
    }

    void setResources(const char* text) const {
        xcb_change_property(tray->connection().get(), XCB_PROP_MODE_REPLACE,
                            tray->connection().root(), XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING,
                            8, static_cast<std::uint32_t>(std::strlen(text)), text);
        tray->connection().sync();
    }

    /// The level view of this size in place of the button.
    std::shared_ptr<Level> showLevel(const Rect& frame, const Rect& levelFrame) {
        auto box = std::make_shared<View>();
        auto level = std::make_shared<Level>();
        box->setFrame(frame);
        level->setFrame(levelFrame);
        prepare(*level);
        box->addSubview(level);
        item->setCustomView(box);
        return level;
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
    EXPECT_EQ(item->button()->bounds(), (Rect{0, 0, 40, 28}));
    EXPECT_EQ(bar.thickness(), 28);
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
    EXPECT_EQ(item->button()->bounds(), (Rect{0, 0, 28, 28}));
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

TEST_F(XEmbedTest, ColoursThatTheTraySets) {
    dock({.ground = 0x202020, .colors = {0, 0, 0}});
    EXPECT_TRUE(until([this] { return darkest() == 0; })) << "black labels are asked for";
    tray->setColors({0xFFFF, 0xFFFF, 0xFFFF});
    EXPECT_TRUE(until([this] { return brightest() == 255; }));
}

TEST_F(XEmbedTest, BothButtonsWithTheirEvent) {
    dock();
    const Hand user;
    user.move(1205, 10);
    for (const std::uint8_t button : {1, 3}) {
        user.click(button);
    }
    ASSERT_TRUE(until([this] { return actions.size() == 2; }));
    EXPECT_EQ(actions[0].type, EventType::leftMouseUp);
    EXPECT_EQ(actions[1].type, EventType::rightMouseUp);
    EXPECT_EQ(actions[0].rootX, 1205);
    EXPECT_EQ(actions[0].rootY, 10);
    EXPECT_GT(actions[0].time, 0U);
    EXPECT_FALSE(current.get()) << "afterwards";
}

TEST_F(XEmbedTest, OtherButtonsAndReleasesElsewhereAreNoClicks) {
    dock();
    const Hand user;
    const auto release = [&](std::uint8_t button, int x) {
        user.move(1205, 10);
        user.press(button);
        user.move(x, 10);
        user.release(button);
    };
    release(1, 1199);
    release(1, 1222);
    release(2, 1205);
    release(4, 1205);
    release(3, 1221);
    ASSERT_TRUE(until([this] { return !actions.empty(); }));
    EXPECT_EQ(actions[0].type, EventType::rightMouseUp);
    EXPECT_EQ(actions.size(), 1U);
}

TEST_F(XEmbedTest, ACustomViewTakesThePlaceOfTheButton) {
    dock({.item = {1200, 3, 40, 22}});
    const auto button = item->button();
    const auto level = showLevel({0, 0, 40, 22}, {20, 0, 20, 22});
    EXPECT_EQ(item->button(), nullptr);
    EXPECT_FALSE(button->isInWindow());
    EXPECT_EQ(level->onScreen(), (Rect{1220, 775, 20, 22}));
    settle();
    const QImage pixels = tray->itemPixels();
    int left = 0;
    int right = 0;
    for (int y = 0; y < 22; ++y) {
        for (int x = 0; x < 40; ++x) {
            (x < 20 ? left : right) += qGray(pixels.pixel(x, y)) > 0x80 ? 1 : 0;
        }
    }
    EXPECT_EQ(left, 0);
    EXPECT_GT(right, 10);

    const Hand user;
    for (const int x : {1205, 1230}) {
        user.move(x, 10);
        user.click(1);
    }
    ASSERT_TRUE(until([this] { return !actions.empty(); }));
    EXPECT_EQ(actions.size(), 1U);
    EXPECT_EQ(actions[0].rootX, 1230);

    item->setCustomView(nullptr);
    EXPECT_EQ(item->button(), button);
    EXPECT_TRUE(button->isInWindow());
    EXPECT_FALSE(level->isInWindow());
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
    ASSERT_TRUE(until([this] { return item->button()->bounds() == Rect{0, 0, 60, 22}; }));
    const auto hints = cardinals(tray->connection(), tray->item(), XCB_ATOM_WM_NORMAL_HINTS);
    ASSERT_TRUE(hints);
    EXPECT_EQ((*hints)[5], 60U);
}

TEST_F(XEmbedTest, HiddenAndShownAgain) {
    dock();
    const xcb_window_t window = tray->item();
    item->setVisible(false);
    EXPECT_TRUE(until([&] { return !tray->exists(window); }));
    EXPECT_FALSE(item->button()->isInWindow());
    item->setVisible(true);
    EXPECT_TRUE(until(
        [&] { return tray->hasItem() && tray->taken() == 2 && item->button()->isInWindow(); }));
}

TEST_F(XEmbedTest, GoesWithItsItem) {
    dock();
    const xcb_window_t window = tray->item();
    const auto button = item->button();
    EXPECT_EQ(bar.statusItem(squareStatusItemLength), nullptr) << "there is one";
    item.reset();
    EXPECT_TRUE(until([&] { return !tray->exists(window); }));
    EXPECT_EQ(button->bounds(), (Rect{0, 0, 22, 22}));
    button->setAlphaValue(0.5);
    loop.drain();
    EXPECT_NE(bar.statusItem(squareStatusItemLength), nullptr);
}

TEST_F(XEmbedTest, AnActionMayLetGoOfTheItem) {
    dock();
    item->button()->setAction({"", [this](Sender*) { item.reset(); }});
    const Hand user;
    user.move(1205, 10);
    user.click(1);
    EXPECT_TRUE(until([this] { return item == nullptr; }));
}

TEST_F(XEmbedTest, DocksAgainInTheNextTray) {
    dock();
    const xcb_window_t window = tray->item();
    tray.reset();
    const XClient other;
    EXPECT_TRUE(until([&] { return !placeOf(other.connection(), window); }));
    EXPECT_FALSE(item->button()->isInWindow());
    EXPECT_EQ(bar.thickness(), 22);
    EXPECT_EQ(bar.panelOnScreen(), std::nullopt);

    tray = std::make_unique<FakeTray>(FakeTray::Settings{.item = {50, 2, 24, 24}});
    EXPECT_TRUE(until([this] { return tray->hasItem() && item->button()->isInWindow(); }));
    EXPECT_EQ(item->button()->onScreen(), (Rect{50, 774, 24, 24}));
}

TEST_F(XEmbedTest, DocksInATrayThatComesLate) {
    makeItem();
    EXPECT_FALSE(item->button()->isInWindow());
    tray = std::make_unique<FakeTray>();
    EXPECT_TRUE(until([this] { return tray->hasItem() && item->button()->isInWindow(); }));
}

TEST_F(XEmbedTest, SaysOncePerLossThatThereIsNoTray) {
    makeItem();
    loop.advance(2.9);
    EXPECT_TRUE(diagnostics.take().empty());
    loop.advance(0.2);
    const std::vector<std::string> none{
        "⚠️ No tray on this desktop; start Quillon again to open its hub"};
    EXPECT_EQ(diagnostics.take(), none);
    loop.advance(60);
    EXPECT_TRUE(diagnostics.take().empty());

    tray = std::make_unique<FakeTray>();
    ASSERT_TRUE(until([this] { return tray->hasItem(); }));
    EXPECT_EQ(diagnostics.take(), std::vector<std::string>{"✅ The tray is there"});

    tray.reset();
    ASSERT_TRUE(until([this] { return loop.timerCount() > 0; }));
    loop.advance(3.1);
    EXPECT_EQ(diagnostics.take(), none);
}

TEST_F(XEmbedTest, ATrayThatIsBackInTimeIsNotMissed) {
    dock();
    tray.reset();
    ASSERT_TRUE(until([this] { return loop.timerCount() > 0; }));
    tray = std::make_unique<FakeTray>();
    ASSERT_TRUE(until([this] { return tray->hasItem(); }));
    loop.advance(10);
    EXPECT_TRUE(diagnostics.take().empty());
}

TEST_F(XEmbedTest, SurvivesTheLossOfItsConnection) {
    dock();
    xcb_kill_client(tray->connection().get(), tray->item());
    tray->connection().sync();
    EXPECT_TRUE(until([&] {
        loop.advance(0.01);
        return tray->hasItem() && tray->taken() == 2 && item->button()->isInWindow();
    }));
}

TEST_F(XEmbedTest, SurvivesTheEndOfTheServer) {
    dock();
    server.kill();
    ASSERT_TRUE(until([this] { return bar.panelOnScreen() == std::nullopt; }));
    item->button()->setAlphaValue(0.5);
    item->setLength(30);
    loop.advance(60);
    EXPECT_FALSE(item->button()->isInWindow());
    EXPECT_EQ(bar.thickness(), 22);
    EXPECT_EQ(loop.timerCount(), 0U) << "nobody is asked over and over";
}

TEST_F(XEmbedTest, WorksWithoutAnyServer) {
    server.kill();
    makeItem();
    EXPECT_FALSE(item->button()->isInWindow());
    item->setVisible(false);
    item->setVisible(true);
    loop.advance(4);
    EXPECT_EQ(diagnostics.take().size(), 1U);
}

TEST_F(XEmbedTest, ToolTipAfterAWhile) {
    dock();
    item->button()->setToolTip("Open");
    settle();
    const Hand user;
    user.move(10, 400);
    settle();
    const auto timers = loop.timerCount();
    user.move(1205, 10);
    ASSERT_TRUE(until([&] { return loop.timerCount() > timers; }));
    loop.advance(0.6);
    EXPECT_FALSE(QToolTip::isVisible());
    loop.advance(0.15);
    EXPECT_TRUE(QToolTip::isVisible());
    EXPECT_EQ(QToolTip::text(), "Open");

    item->button()->setToolTip("Volume 42.5");
    loop.drain();
    EXPECT_EQ(QToolTip::text(), "Volume 42.5");

    user.press(1);
    EXPECT_TRUE(until([] { return !QToolTip::isVisible(); }));
    user.release(1);
}

TEST_F(XEmbedTest, NoToolTipForAPointerThatHasLeft) {
    dock();
    item->button()->setToolTip("Open");
    settle();
    loop.advance(paintedSeconds);
    const Hand user;
    user.move(1205, 10);
    ASSERT_TRUE(until([this] { return loop.timerCount() == 1; }));
    user.move(10, 400);
    ASSERT_TRUE(until([this] { return loop.timerCount() == 0; }));
    loop.advance(5);
    EXPECT_FALSE(QToolTip::isVisible());
}

} // namespace
} // namespace quillon
