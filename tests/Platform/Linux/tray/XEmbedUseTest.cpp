#include "Platform/Linux/tray/XEmbedBench.h"

#include <QToolTip>

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct XEmbedUse : testing::Test, XEmbedBench {};

TEST_F(XEmbedUse, BothButtonsWithTheirEvent) {
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

TEST_F(XEmbedUse, OtherButtonsAndReleasesElsewhereAreNoClicks) {
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

TEST_F(XEmbedUse, ACustomViewTakesThePlaceOfTheButton) {
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

TEST_F(XEmbedUse, AnActionMayLetGoOfTheItem) {
    dock();
    item->button()->setAction({"", [this](Sender*) { item.reset(); }});
    const Hand user;
    user.move(1205, 10);
    user.click(1);
    EXPECT_TRUE(until([this] { return item == nullptr; }));
}

TEST_F(XEmbedUse, ToolTipAfterAWhile) {
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

TEST_F(XEmbedUse, ToolTipOfTheLevelThatIsShown) {
    dock();
    const auto level = showLevel({0, 0, 22, 22}, {0, 0, 22, 22});
    level->setToolTip("Volume 42.5");
    settle();
    loop.advance(paintedSeconds);
    const Hand user;
    user.move(1205, 10);
    ASSERT_TRUE(until([this] { return loop.timerCount() == 1; }));
    loop.advance(0.75);
    EXPECT_TRUE(QToolTip::isVisible());
    EXPECT_EQ(QToolTip::text(), "Volume 42.5");
    level->setToolTip("Volume 43");
    loop.drain();
    EXPECT_EQ(QToolTip::text(), "Volume 43");
    user.move(10, 400);
    EXPECT_TRUE(until([] { return !QToolTip::isVisible(); }));
}

TEST_F(XEmbedUse, NoToolTipForAPointerThatHasLeft) {
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
