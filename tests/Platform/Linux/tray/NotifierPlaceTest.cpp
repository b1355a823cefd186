#include "Platform/Linux/tray/NotifierBench.h"
#include "Platform/Linux/tray/NotifierItem.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

struct NotifierPlace : testing::Test, NotifierBench {};

TEST(SquareAround, AsWideAsThePanelIsThickAndWithinIt) {
    const PixelRect below{0, 772, 1280, 28};
    EXPECT_EQ(squareAround({600, 780}, below, 24), (PixelRect{586, 772, 28, 28}));
    EXPECT_EQ(squareAround({1279, 799}, below, 24), (PixelRect{1252, 772, 28, 28}));
    const PixelRect upright{0, 0, 40, 800};
    EXPECT_EQ(squareAround({3, 400}, upright, 24), (PixelRect{0, 380, 40, 40}));
    EXPECT_EQ(squareAround({100, 100}, std::nullopt, 24), (PixelRect{88, 88, 24, 24}));
}

TEST_F(NotifierPlace, IsWhereItWasLastActivated) {
    offer();
    EXPECT_FALSE(item->button()->isInWindow());
    finish(watcher->call("Activate", {300, 300}));
    EXPECT_EQ(item->button()->onScreen(), (Rect{288, 488, 24, 24}));
    EXPECT_EQ(item->button()->bounds(), (Rect{0, 0, 22, 22}));
    EXPECT_EQ(bar.panelOnScreen(), std::nullopt);
}

TEST_F(NotifierPlace, AsHighAsThePanelThere) {
    const Dock dock({0, 770, 1280, 30}, 0);
    offer();
    finish(watcher->call("Activate", {300, 780}));
    EXPECT_EQ(item->button()->onScreen(), (Rect{285, 0, 30, 30}));
    EXPECT_EQ(bar.panelOnScreen(), (Rect{0, 0, 1280, 30}));
    EXPECT_FALSE(bar.isVertical());
}

TEST_F(NotifierPlace, AtThePointerWhereTheHostDoesNotSay) {
    const Dock dock({0, 0, 40, 800}, 0);
    offer();
    Hand().move(20, 500);
    finish(watcher->call("Activate", {0, 900}));
    EXPECT_EQ(item->button()->onScreen(), (Rect{0, 280, 40, 40}));
    EXPECT_TRUE(bar.isVertical());
}

TEST_F(NotifierPlace, AtThePointerInAPanelBeforeAnybodyHasSaid) {
    const Dock dock({0, 0, 1280, 30}, 0);
    offer();
    const Hand user;
    user.move(640, 300);
    EXPECT_FALSE(item->button()->isInWindow());
    user.move(900, 3);
    EXPECT_EQ(item->button()->onScreen(), (Rect{885, 770, 30, 30}));
    finish(watcher->call("Activate", {900, 3}));
    user.move(300, 3);
    EXPECT_EQ(item->button()->onScreen(), (Rect{885, 770, 30, 30})) << "it is known now";
}

TEST_F(NotifierPlace, NowhereWhileItIsNotOffered) {
    const Dock dock({0, 0, 1280, 30}, 0);
    makeItem();
    Hand().move(900, 3);
    EXPECT_FALSE(item->button()->isInWindow());
}

TEST_F(NotifierPlace, ThePointerInAPanelBeforeWhatTheHostSays) {
    const Dock dock({0, 0, 1280, 30}, 0);
    offer();
    const Hand user;
    user.move(900, 3);
    finish(watcher->call("Activate", {0, 0}));
    EXPECT_EQ(item->button()->onScreen(), (Rect{885, 770, 30, 30}));
    user.move(640, 400);
    finish(watcher->call("Activate", {0, 0}));
    EXPECT_EQ(item->button()->onScreen(), (Rect{628, 388, 24, 24})) << "a null point is no place";
    ASSERT_TRUE(until([this] { return actions.size() == 2; }));
    EXPECT_EQ(actions[0], (UserAction{EventType::leftMouseUp, 0, 900, 3}));
    EXPECT_EQ(actions[1], (UserAction{EventType::leftMouseUp, 0, 640, 400}));
}

TEST_F(NotifierPlace, ThePanelOfTheMainScreenBeforeAnybodyHasSaid) {
    makeItem();
    EXPECT_EQ(bar.panelOnScreen(), std::nullopt);
    {
        const Dock elsewhere({0, 800, 1280, 30}, 0);
        EXPECT_EQ(bar.panelOnScreen(), std::nullopt);
    }
    const Dock dock({0, 0, 40, 800}, 0);
    EXPECT_EQ(bar.panelOnScreen(), (Rect{0, 0, 40, 800}));
    EXPECT_TRUE(bar.isVertical());
    item.reset();
    offer();
    finish(watcher->call("Activate", {300, 300}));
    EXPECT_EQ(bar.panelOnScreen(), std::nullopt) << "it is elsewhere";
}

TEST_F(NotifierPlace, DarkOnALightPanel) {
    offer();
    const auto red = [this] {
        const NotifierPixmap pixmap = pixmaps()[3];
        for (qsizetype i = 0; i < pixmap.bytes.size(); i += 4) {
            if (static_cast<unsigned char>(pixmap.bytes[i]) == 255) {
                return int{static_cast<unsigned char>(pixmap.bytes[i + 1])};
            }
        }
        return -1;
    };
    EXPECT_EQ(red(), 255);
    const Dock dock({0, 770, 1280, 30}, 0xEEEEEE);
    EXPECT_TRUE(until([this] { return watcher->newIcons > 0; })) << "a panel came";
    EXPECT_EQ(red(), 0);
}

} // namespace
} // namespace quillon
