#include "Platform/Linux/windows/Placement.h"

#include <gtest/gtest.h>

#include <vector>

namespace quillon {
namespace {

constexpr Rect screen{0, 0, 1280, 800};
constexpr Size size{360, 480};
constexpr double gap = 6;

constexpr Rect topPanel{0, 776, 1280, 24};
constexpr Rect bottomPanel{0, 0, 1280, 24};
constexpr Rect leftPanel{0, 0, 24, 800};
constexpr Rect rightPanel{1256, 0, 24, 800};

bool isWithin(const Rect& inner, const Rect& outer) {
    return inner.minX() >= outer.minX() && inner.maxX() <= outer.maxX() &&
           inner.minY() >= outer.minY() && inner.maxY() <= outer.maxY();
}

TEST(PlacePopover, BelowATopPanelCentredOnTheAnchor) {
    EXPECT_EQ(placePopover({{600, 778, 22, 20}, screen, topPanel}, RectEdge::minY, size, gap),
              (Rect{431, 290, 360, 480}));
}

TEST(PlacePopover, AboveABottomPanelWhateverEdgeIsPreferred) {
    for (const auto edge : {RectEdge::minY, RectEdge::maxY, RectEdge::minX, RectEdge::maxX}) {
        EXPECT_EQ(placePopover({{600, 2, 22, 20}, screen, bottomPanel}, edge, size, gap),
                  (Rect{431, 30, 360, 480}));
    }
}

TEST(PlacePopover, BesideAVerticalPanel) {
    EXPECT_EQ(placePopover({{2, 400, 20, 20}, screen, leftPanel, true}, RectEdge::minY, size, gap),
              (Rect{30, 170, 360, 480}));
    EXPECT_EQ(
        placePopover({{1258, 400, 20, 20}, screen, rightPanel, true}, RectEdge::minY, size, gap),
        (Rect{890, 170, 360, 480}));
}

TEST(PlacePopover, KeepsItsDistanceFromTheEndsOfTheScreen) {
    EXPECT_EQ(placePopover({{1250, 778, 22, 20}, screen, topPanel}, RectEdge::minY, size, gap).x,
              1280 - 6 - 360);
    EXPECT_EQ(placePopover({{2, 778, 22, 20}, screen, topPanel}, RectEdge::minY, size, gap).x, 6);
    EXPECT_EQ(placePopover({{2, 2, 20, 20}, screen, leftPanel, true}, RectEdge::minY, size, gap).y,
              6);
    EXPECT_EQ(
        placePopover({{2, 778, 20, 20}, screen, leftPanel, true}, RectEdge::minY, size, gap).y,
        800 - 6 - 480);
}

TEST(PlacePopover, ClearsTheWholePanelNotTheAnchorOnly) {
    // An anchor that is lower than its panel, and one that sticks out of it.
    EXPECT_EQ(placePopover({{600, 790, 10, 8}, screen, topPanel}, RectEdge::minY, size, gap).maxY(),
              770);
    EXPECT_EQ(
        placePopover({{600, 770, 10, 28}, screen, topPanel}, RectEdge::minY, size, gap).maxY(),
        764);
}

TEST(PlacePopover, APanelElsewhereDoesNotMatter) {
    EXPECT_EQ(placePopover({{600, 778, 22, 20}, screen, bottomPanel}, RectEdge::minY, size, gap),
              (Rect{431, 292, 360, 480}));
}

TEST(PlacePopover, APanelThatLeavesNoRoomKeepsTheAnchorFree) {
    EXPECT_EQ(placePopover({{600, 700, 22, 20}, screen, Rect{0, 0, 1280, 800}}, RectEdge::minY,
                           size, gap),
              (Rect{431, 214, 360, 480}));
}

TEST(PlacePopover, WithoutAPanelOnThePreferredEdge) {
    const Rect anchor{600, 400, 20, 20};
    const Size small{100, 60};
    EXPECT_EQ(placePopover({anchor, screen}, RectEdge::minY, small, gap),
              (Rect{560, 334, 100, 60}));
    EXPECT_EQ(placePopover({anchor, screen}, RectEdge::maxY, small, gap),
              (Rect{560, 426, 100, 60}));
    EXPECT_EQ(placePopover({anchor, screen}, RectEdge::minX, small, gap),
              (Rect{494, 380, 100, 60}));
    EXPECT_EQ(placePopover({anchor, screen}, RectEdge::maxX, small, gap),
              (Rect{626, 380, 100, 60}));
}

TEST(PlacePopover, OnTheOtherEdgeWhereThePreferredOneHasNoRoom) {
    EXPECT_EQ(placePopover({{600, 2, 22, 20}, screen}, RectEdge::minY, size, gap),
              (Rect{431, 28, 360, 480}));
    EXPECT_EQ(placePopover({{600, 778, 22, 20}, screen}, RectEdge::maxY, size, gap),
              (Rect{431, 292, 360, 480}));
    EXPECT_EQ(placePopover({{2, 400, 22, 20}, screen}, RectEdge::minX, size, gap),
              (Rect{30, 170, 360, 480}));
}

TEST(PlacePopover, OfOneLargerThanTheScreenTheUpperLeftIsOnIt) {
    const Rect small{0, 0, 320, 240};
    const Rect place = placePopover({{100, 220, 20, 20}, small}, RectEdge::minY, size, gap);
    EXPECT_EQ(place.minX(), 0);
    EXPECT_EQ(place.maxY(), 240);
}

TEST(PlacePopover, OnlyJustFitting) {
    const Rect tight{0, 0, 360, 480};
    EXPECT_EQ(placePopover({{170, 460, 20, 20}, tight}, RectEdge::minY, size, gap), tight);
}

TEST(PlacePopover, IsWhollyOnItsScreenWhereverTheAnchorIs) {
    for (const Rect& frame : {screen, Rect{-1920, -200, 1920, 1080}, Rect{1280, 100, 800, 600}}) {
        const std::vector<std::optional<Rect>> panels{
            std::nullopt, Rect{frame.x, frame.maxY() - 30, frame.width, 30},
            Rect{frame.x, frame.y, frame.width, 30}, Rect{frame.x, frame.y, 30, frame.height},
            Rect{frame.maxX() - 30, frame.y, 30, frame.height}};
        for (std::size_t i = 0; i < panels.size(); ++i) {
            for (double x = frame.minX() - 10; x < frame.maxX(); x += 97) {
                for (double y = frame.minY() - 10; y < frame.maxY(); y += 89) {
                    const PopoverSite site{{x, y, 22, 22}, frame, panels[i], i >= 3};
                    const Rect place = placePopover(site, RectEdge::minY, size, gap);
                    ASSERT_TRUE(isWithin(place, frame)) << x << ' ' << y << " panel " << i;
                }
            }
        }
    }
}

TEST(PlacePopoverWithoutAnchor, AtTheTopRight) {
    EXPECT_EQ(placePopoverWithoutAnchor(screen, std::nullopt, false, size, gap),
              (Rect{914, 314, 360, 480}));
}

TEST(PlacePopoverWithoutAnchor, OffAPanelThatIsThere) {
    EXPECT_EQ(placePopoverWithoutAnchor(screen, topPanel, false, size, gap),
              (Rect{914, 290, 360, 480}));
    EXPECT_EQ(placePopoverWithoutAnchor(screen, rightPanel, true, size, gap),
              (Rect{890, 314, 360, 480}));
    EXPECT_EQ(placePopoverWithoutAnchor(screen, bottomPanel, false, size, gap),
              (Rect{914, 314, 360, 480}));
    EXPECT_EQ(placePopoverWithoutAnchor(screen, leftPanel, true, size, gap),
              (Rect{914, 314, 360, 480}));
    EXPECT_EQ(placePopoverWithoutAnchor(screen, Rect{1280, 576, 800, 24}, false, size, gap),
              (Rect{914, 314, 360, 480}))
        << "a panel of another screen";
}

TEST(PlaceMenu, BelowThePointAlignedLeft) {
    EXPECT_EQ(placeMenu({600, 776}, {600, 776, 22, 24}, screen, {120, 90}),
              (Rect{600, 686, 120, 90}));
}

TEST(PlaceMenu, AboveAnItemAtTheBottom) {
    EXPECT_EQ(placeMenu({600, 0}, {600, 0, 22, 24}, screen, {120, 90}), (Rect{600, 24, 120, 90}));
}

TEST(PlaceMenu, OnTheScreenAtTheRightEnd) {
    EXPECT_EQ(placeMenu({1258, 776}, {1258, 776, 22, 24}, screen, {120, 90}),
              (Rect{1160, 686, 120, 90}));
    EXPECT_EQ(placeMenu({1258, 0}, {1258, 0, 22, 24}, screen, {120, 90}),
              (Rect{1160, 24, 120, 90}));
}

TEST(PlaceMenu, AtThePointerItOpensToTheSideThatHasRoom) {
    EXPECT_EQ(placeMenu({601, 399}, {600, 399, 1, 1}, screen, {120, 90}),
              (Rect{601, 309, 120, 90}));
    EXPECT_EQ(placeMenu({601, 9}, {600, 9, 1, 1}, screen, {120, 90}), (Rect{601, 0, 120, 90}));
    EXPECT_EQ(placeMenu({1280, 9}, {1279, 9, 1, 1}, screen, {120, 90}), (Rect{1160, 10, 120, 90}));
}

TEST(PlaceMenu, BesideAnItemAsHighAsTheScreen) {
    EXPECT_EQ(placeMenu({0, 0}, {0, 0, 24, 800}, screen, {120, 90}), (Rect{24, 710, 120, 90}));
    EXPECT_EQ(placeMenu({1256, 0}, {1256, 0, 24, 800}, screen, {120, 90}),
              (Rect{1136, 710, 120, 90}));
}

TEST(ScreenOf, TheOneWithTheMiddleElseTheNearest) {
    const std::vector<Rect> screens{{0, 0, 1280, 800}, {1280, 100, 800, 600}, {-500, 0, 500, 800}};
    EXPECT_EQ(screenOf({10, 10, 20, 20}, screens), screens[0]);
    EXPECT_EQ(screenOf({1270, 300, 40, 20}, screens), screens[1]);
    EXPECT_EQ(screenOf({-30, 300, 40, 20}, screens), screens[2]);
    EXPECT_EQ(screenOf({1400, 20, 20, 20}, screens), screens[1]) << "below a smaller screen";
    EXPECT_EQ(screenOf({-9000, 20, 20, 20}, screens), screens[2]);
}

TEST(RoomBeside, TheScreenLessThePanelOnIt) {
    const Rect whole{0, 0, 1280, 800};
    EXPECT_EQ(roomBeside(Rect{0, 770, 1280, 30}, false, whole, 6), (Size{1268, 758}));
    EXPECT_EQ(roomBeside(Rect{0, 0, 60, 800}, true, whole, 6), (Size{1208, 788}));
    EXPECT_EQ(roomBeside(std::nullopt, false, whole, 6), (Size{1268, 788}));
    EXPECT_EQ(roomBeside(Rect{1280, 770, 1280, 30}, false, whole, 6), (Size{1268, 788}))
        << "that of another screen";
}

TEST(PlaceMenuBeside, OffThePanelTowardTheMiddleOfTheScreen) {
    const Rect whole{0, 0, 1280, 800};
    const Size menu{215, 90};
    EXPECT_EQ(placeMenuBeside({0, 770, 1280, 30}, false, {900, 780}, whole, menu),
              (Rect{900, 680, 215, 90}));
    EXPECT_EQ(placeMenuBeside({0, 0, 1280, 30}, false, {900, 20}, whole, menu),
              (Rect{900, 30, 215, 90}));
    EXPECT_EQ(placeMenuBeside({0, 770, 1280, 30}, false, {1270, 780}, whole, menu),
              (Rect{1065, 680, 215, 90}))
        << "not over the edge";
    EXPECT_EQ(placeMenuBeside({0, 0, 60, 800}, true, {30, 400}, whole, menu),
              (Rect{60, 310, 215, 90}));
    EXPECT_EQ(placeMenuBeside({1220, 0, 60, 800}, true, {1250, 40}, whole, menu),
              (Rect{1005, 0, 215, 90}));
}

} // namespace
} // namespace quillon
