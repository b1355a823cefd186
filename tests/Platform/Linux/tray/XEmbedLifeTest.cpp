#include "Platform/Linux/tray/PanelWindows.h"
#include "Platform/Linux/tray/XEmbedBench.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct XEmbedLife : testing::Test, XEmbedBench {};

TEST_F(XEmbedLife, HiddenAndShownAgain) {
    dock();
    const xcb_window_t window = tray->item();
    item->setVisible(false);
    EXPECT_TRUE(until([&] { return !tray->exists(window); }));
    EXPECT_FALSE(item->button()->isInWindow());
    item->setVisible(true);
    EXPECT_TRUE(until(
        [&] { return tray->hasItem() && tray->taken() == 2 && item->button()->isInWindow(); }));
}

TEST_F(XEmbedLife, GoesWithItsItem) {
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

TEST_F(XEmbedLife, DocksAgainInTheNextTray) {
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

TEST_F(XEmbedLife, AWindowThatIsThrownOutLeavesTheDesktopAndTriesAgain) {
    dock();
    for (const bool destroyed : {false, true}) {
        const xcb_window_t window = tray->item();
        const int taken = tray->taken();
        tray->throwOut(destroyed);
        ASSERT_TRUE(until([&] { return !tray->exists(window); }));
        EXPECT_FALSE(item->button()->isInWindow());
        EXPECT_TRUE(until([&] {
            loop.advance(0.01);
            return tray->hasItem() && tray->taken() == taken + 1 && item->button()->isInWindow();
        }));
    }
}

TEST_F(XEmbedLife, DocksInATrayThatComesLate) {
    makeItem();
    EXPECT_FALSE(item->button()->isInWindow());
    tray = std::make_unique<FakeTray>();
    EXPECT_TRUE(until([this] { return tray->hasItem() && item->button()->isInWindow(); }));
}

TEST_F(XEmbedLife, SaysOncePerLossThatThereIsNoTray) {
    makeItem();
    loop.advance(2.9);
    EXPECT_TRUE(diagnostics.take().empty());
    loop.advance(0.2);
    const std::vector<std::string> none{
        "⚠️ No tray on this desktop; start Quillon again to open its hub"};
    EXPECT_EQ(diagnostics.take(), none);
    item->setVisible(false);
    item->setVisible(true);
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

TEST_F(XEmbedLife, ATrayThatIsBackInTimeIsNotMissed) {
    dock();
    tray.reset();
    ASSERT_TRUE(until([this] { return loop.timerCount() > 0; }));
    tray = std::make_unique<FakeTray>();
    ASSERT_TRUE(until([this] { return tray->hasItem(); }));
    loop.advance(10);
    EXPECT_TRUE(diagnostics.take().empty());
}

TEST_F(XEmbedLife, SurvivesTheLossOfItsConnection) {
    dock();
    xcb_kill_client(tray->connection().get(), tray->item());
    tray->connection().sync();
    EXPECT_TRUE(until([&] {
        loop.advance(0.01);
        return tray->hasItem() && tray->taken() == 2 && item->button()->isInWindow();
    }));
}

TEST_F(XEmbedLife, SurvivesTheEndOfTheServer) {
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

TEST_F(XEmbedLife, WorksWithoutAnyServer) {
    server.kill();
    makeItem();
    EXPECT_FALSE(item->button()->isInWindow());
    item->setVisible(false);
    item->setVisible(true);
    loop.advance(4);
    EXPECT_EQ(diagnostics.take().size(), 1U);
}

} // namespace
} // namespace quillon
